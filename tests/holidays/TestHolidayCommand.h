#pragma once

#include <QObject>

// `verdaly holidays FROM [TO]`: its output, its refusals, and that it runs bare.
class TestHolidayCommand final : public QObject
{
    Q_OBJECT

private slots:
    void output_data();
    void output();
    void runsWithoutDisplayOrDataFolder();
};
