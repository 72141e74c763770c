// The `verdaly` command. Subcommands that print something (`verdaly holidays ...`) run here,
// in a small program that loads no toolkit, so they answer at once and need no display.
// Anything else is the calendar: this process becomes the window program beside it
// (execv keeps the process id, the arguments and the environment), so starting the
// calendar through `verdaly` is the same as starting it directly. `--version` and `--help`
// are answered here too, so they work over ssh, in scripts and in package checks.
#include "cli/HolidaysCommand.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

#include <unistd.h>

namespace {

const char* const WindowProgram = "verdaly-gui";

const char* const Help = "使い方: verdaly [--data-dir フォルダ] [--autostart]\n"
                         "        verdaly holidays 開始年 [終了年]\n"
                         "        verdaly --version | --help\n"
                         "\n"
                         "デスクトップに置いておくひと月のカレンダー Halvern Verdaly を起動します。\n"
                         "\n"
                         "オプション:\n"
                         "  --data-dir フォルダ  データベース・設定・ロックファイルをこのフォルダに置く\n"
                         "                       (省略時は ~/.local/share/halvern-verdaly)\n"
                         "  --autostart          ログイン時の起動: 常駐が設定されていればウィンドウを\n"
                         "                       出さずにタスクトレイに入る\n"
                         "  --version            版を表示して終了する\n"
                         "  --help               この説明を表示して終了する\n"
                         "\n"
                         "サブコマンド (画面なしで動きます):\n"
                         "  holidays 開始年 [終了年]  日本の祝日を「yyyy-mm-dd<TAB>名前」で一行ずつ表示する\n";

// Whether any argument is this option; a folder after --data-dir never starts with '-',
// so it cannot be mistaken for one.
bool HasOption(int argc, char* argv[], const char* option)
{
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], option) == 0)
            return true;
    }
    return false;
}

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
    if (HasOption(argc, argv, "--help") || HasOption(argc, argv, "-h")) {
        std::fputs(Help, stdout);
        return 0;
    }
    if (HasOption(argc, argv, "--version")) {
        std::puts("Halvern Verdaly " VERDALY_VERSION);
        return 0;
    }

    const std::string program = OwnFolder(argc > 0 ? argv[0] : nullptr) + '/' + WindowProgram;
    execv(program.c_str(), argv);
    std::fprintf(stderr, "verdaly: cannot start %s: %s\n", program.c_str(), std::strerror(errno));
    return 127;
}
