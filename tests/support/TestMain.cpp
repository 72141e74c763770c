#include "support/TestKit.h"

#include <QApplication>
#include <QtTest>

#include <cstdio>
#include <exception>
#include <map>
#include <string>
#include <unistd.h>

namespace {
std::map<std::string, std::function<QObject*()>>& Registry()
{
    static std::map<std::string, std::function<QObject*()>> registry;
    return registry;
}

// An exception that escapes a test (through the event loop of a modal dialog, say) ends
// the program at once with a message, instead of waiting on a debugger for a stack trace.
[[noreturn]] void UncaughtException()
{
    const char* what = "unknown exception";
    try {
        if (const std::exception_ptr current = std::current_exception())
            std::rethrow_exception(current);
    } catch (const std::exception& e) {
        what = e.what();
    } catch (...) {
    }
    std::fprintf(stderr, "FAIL! uncaught exception: %s\n", what);
    std::fflush(stderr);
    _exit(70);
}
} // namespace

int RegisterTestClass(const char* name, std::function<QObject*()> make)
{
    Registry()[name] = std::move(make);
    return 0;
}

// Runs every registered test class; "-class Name" as the first arguments runs only that one.
int main(int argc, char** argv)
{
    qputenv("QTEST_DISABLE_STACK_DUMP", "1");
    qputenv("QTEST_DISABLE_CORE_DUMP", "1");
    std::set_terminate(UncaughtException);
    QApplication::setAttribute(Qt::AA_Use96Dpi, true);
    QApplication app(argc, argv);
    QString only;
    if (argc >= 3 && qstrcmp(argv[1], "-class") == 0) {
        only = QString::fromLatin1(argv[2]);
        argv[2] = argv[0];
        argv += 2;
        argc -= 2;
    }
    int failures = 0;
    for (const auto& [name, make] : Registry()) {
        if (!only.isEmpty() && only != QLatin1String(name.c_str()))
            continue;
        std::unique_ptr<QObject> test(make());
        failures += QTest::qExec(test.get(), argc, argv);
    }
    return failures == 0 ? 0 : 1;
}
