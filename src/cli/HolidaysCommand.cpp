#include "cli/HolidaysCommand.h"

#include "holidays/CivilDate.h"
#include "holidays/HolidayRules.h"

#include <cstring>
#include <string>

namespace {

const char* const Usage = "usage: verdaly holidays FROM_YEAR [TO_YEAR]\n";

// A year written in plain decimal digits, within the years the engine answers for.
bool ParseYear(const char* text, int* year)
{
    const size_t length = std::strlen(text);
    if (length == 0 || length > 4)
        return false;
    int value = 0;
    for (size_t i = 0; i < length; ++i) {
        if (text[i] < '0' || text[i] > '9')
            return false;
        value = value * 10 + (text[i] - '0');
    }
    *year = value;
    return true;
}

void AppendNumber(std::string& line, int value, int width)
{
    char digits[8];
    int n = 0;
    do {
        digits[n++] = static_cast<char>('0' + value % 10);
        value /= 10;
    } while (value > 0 && n < 8);
    for (int i = n; i < width; ++i)
        line += '0';
    while (n > 0)
        line += digits[--n];
}

} // namespace

bool IsHolidaysCommand(int argc, char* argv[])
{
    return argc >= 2 && std::strcmp(argv[1], "holidays") == 0;
}

int RunHolidaysCommand(int argc, char* argv[], std::FILE* out, std::FILE* err)
{
    // argv[0] is the program, argv[1] "holidays".
    if (argc < 3 || argc > 4) {
        std::fputs(Usage, err);
        return 2;
    }
    int from = 0;
    int to = 0;
    if (!ParseYear(argv[2], &from) || (argc == 4 && !ParseYear(argv[3], &to))) {
        std::fprintf(err, "verdaly holidays: a year is written in digits, such as 2026\n%s", Usage);
        return 2;
    }
    if (argc == 3)
        to = from;
    using HolidayRules::FirstYear;
    using HolidayRules::LastYear;
    if (from < FirstYear || to > LastYear || from > LastYear || to < FirstYear) {
        std::fprintf(err, "verdaly holidays: years from %d to %d are known\n", FirstYear, LastYear);
        return 2;
    }
    if (to < from) {
        std::fprintf(err, "verdaly holidays: TO_YEAR %d comes before FROM_YEAR %d\n", to, from);
        return 2;
    }

    std::string text;
    text.reserve(static_cast<size_t>(to - from + 1) * 20 * 32);
    for (int year = from; year <= to; ++year) {
        for (const HolidayRules::Day& holiday : HolidayRules::OfYear(year)) {
            int y = 0;
            int m = 0;
            int d = 0;
            CivilDate::FromJulianDay(holiday.julianDay, &y, &m, &d);
            AppendNumber(text, y, 4);
            text += '-';
            AppendNumber(text, m, 2);
            text += '-';
            AppendNumber(text, d, 2);
            text += '\t';
            text += holiday.name;
            text += '\n';
        }
    }
    std::fwrite(text.data(), 1, text.size(), out);
    return std::fflush(out) == 0 ? 0 : 1;
}
