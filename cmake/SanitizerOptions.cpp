// How the sanitizers look at the project's programs, whoever starts them.

// The thread sanitizer watches the code that was built for it: the locks of the libraries are invisible to
// it. After Qt has started a process, which shares memory with its child for a moment, it takes the parent
// for a fork's child.
extern "C" const char *__tsan_default_options()
{
    return "ignore_noninstrumented_modules=1:die_after_fork=0";
}

extern "C" const char *__asan_default_options()
{
    return "detect_stack_use_after_return=1";
}

extern "C" const char *__ubsan_default_options()
{
    return "print_stacktrace=1";
}
