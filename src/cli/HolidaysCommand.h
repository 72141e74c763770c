#pragma once

#include <cstdio>

// `verdaly holidays FROM_YEAR [TO_YEAR]`: prints the holidays of the years, one a line as
// "yyyy-mm-dd<TAB>name", in date order. Plain C++: the launcher runs it without loading the
// toolkit, a display or a data folder.

// Whether the command line asks for a subcommand of this kind (argv[1] == "holidays").
bool IsHolidaysCommand(int argc, char* argv[]);

// Runs the command with the words after "holidays"; returns the exit code (0, or 2 with a
// message on err for bad arguments).
int RunHolidaysCommand(int argc, char* argv[], std::FILE* out, std::FILE* err);
