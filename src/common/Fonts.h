#pragma once

// Maps the Japanese font names kept in the design rows to fonts this desktop has, and
// answers the fixed-pitch font for time columns.
class QFont;

void RegisterFontSubstitutions();
QFont FixedPitchJapaneseFont(double pointSize);
