#pragma once

#include <QObject>

// The era title format ("gge年m月") across the changes of era.
class TestEraTitle final : public QObject
{
    Q_OBJECT

private slots:
    void title_data();
    void title();
    void pickerShowsTheEraTitle();
};
