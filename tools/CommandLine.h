// The program's command line.
#pragma once

namespace tool {

// Parses the arguments, and runs the command that they name. Answers the program's exit status. What is wrong
// with an argument is thrown as an exception whose message names it.
int runCommandLine(int argc, char **argv);

} // namespace tool
