#pragma once

#include <QDialog>
#include <QString>

#include <memory>

struct AppServices;

namespace Ui {
class FrmEdit;
}

// What the caller hands to the one-line edit dialog and reads back after it closes.
struct EditHandOver
{
    QString EditKind;       // the caller's kind word: "Class", "Priority"
    QString EditTitle;      // the dialog's caption
    QString EditText;       // in: the text to edit; out (after OK): the text entered
    bool EditCheck = false; // the hidden check box, exchanged only for "Priority"
    bool EditOK = false;    // out: the user pressed OK with a text entered
};

// A small modal dialog for one name: OK refuses an empty text.
class FrmEdit final : public QDialog
{
    Q_OBJECT
public:
    FrmEdit(AppServices& app, EditHandOver& handOver, QWidget* parent = nullptr);
    ~FrmEdit() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Form_Load();
    void ComOK_Click();

    AppServices& m_app;
    EditHandOver& m_handOver;
    std::unique_ptr<Ui::FrmEdit> m_ui;
};

// Opens FrmEdit modally on handOver (EditOK cleared first) and answers EditOK.
bool RunEditDialog(AppServices& app, EditHandOver& handOver, QWidget* parent);
