#pragma once

#include <QObject>

// The equinox moments against published almanac times.
class TestEquinox final : public QObject
{
    Q_OBJECT

private slots:
    void moment_data();
    void moment();
};
