#pragma once

// The command line: whether a call is one of its commands (or asks for help or the version), and running it.
bool isCommandLineCall(int argc, char **argv);
int runCommandLine(int argc, char **argv);
