#pragma once

// The header of glibc 2.36 does not say that its functions are C's.
extern "C" {
#include <sys/pidfd.h>
}
