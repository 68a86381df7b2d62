#!/usr/bin/perl
# mediaremote-adapter.pl FRAMEWORK COMMAND…: becomes the helper that lies in the folder FRAMEWORK, and hands it the
# command. Loads no module, since it is started anew for each command. README.md tells what the commands are.
my ($framework, @command) = @ARGV;
my $helper = defined $framework ? "$framework/MediaRemoteAdapter" : '';
exec { $helper } $helper, @command if -x $helper;
print STDERR "usage: $0 FRAMEWORK stream|send|seek …: no helper in that folder\n";
exit 127;
