// The `verdaly` command. Subcommands that print something (`verdaly holidays ...`) run here,
// in a small program that loads no toolkit, so they answer at once and need no display.
// Anything else is the calendar: this process becomes the window program beside it
// (execv keeps the process id, the arguments and the environment), so starting the
// calendar through `verdaly` is the same as starting it directly.
#include "cli/HolidaysCommand.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

#include <unistd.h>

namespace {

const char* const WindowProgram = "verdaly-gui";

// The folder this program was started from.
std::string OwnFolder(const char* argv0)
{
    std::string path;
    char buffer[4096];
    const ssize_t length = readlink("/proc/self/exe", buffer, sizeof buffer - 1);
    if (length > 0)
        path.assign(buffer, static_cast<size_t>(length));
    else if (argv0 != nullptr)
        path = argv0;
    const std::string::size_type slash = path.rfind('/');
    return slash == std::string::npos ? std::string(".") : path.substr(0, slash);
}

} // namespace

int main(int argc, char* argv[])
{
    if (IsHolidaysCommand(argc, argv))
        return RunHolidaysCommand(argc, argv, stdout, stderr);

    const std::string program = OwnFolder(argc > 0 ? argv[0] : nullptr) + '/' + WindowProgram;
    execv(program.c_str(), argv);
    std::fprintf(stderr, "verdaly: cannot start %s: %s\n", program.c_str(), std::strerror(errno));
    return 127;
}
