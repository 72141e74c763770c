#pragma once

#include <QObject>

// Each rule of the holiday law at its edges. The expected days and names are written from
// the law and the government's published list, never taken from the engine.
class TestHolidayRules final : public QObject
{
    Q_OBJECT

private slots:
    void dayOf_data();
    void dayOf();
    void yearsOutsideTheLawHaveNone();
    void betweenCrossesTheYear();
};
