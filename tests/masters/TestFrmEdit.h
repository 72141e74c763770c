#pragma once

#include <QObject>

class TestFrmEdit final : public QObject
{
    Q_OBJECT

private slots:
    void loadsFromHandOver_data();
    void loadsFromHandOver();
    void okHandsTextBack_data();
    void okHandsTextBack();
    void cancelHandsNothingBack_data();
    void cancelHandsNothingBack();
    void refusesEmptyText_data();
    void refusesEmptyText();
    void focusSelectsWholeText();
    void runEditDialogClearsStaleOk();
};
