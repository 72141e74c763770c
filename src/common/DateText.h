#pragma once

#include <QDate>
#include <QString>

// "yyyy/m/d (ddd)" with the Japanese short weekday, e.g. "2026/11/22 (日)": the caption of
// the main window and the date picker. An invalid date gives an empty text.
QString DateCaption(const QDate& date);
