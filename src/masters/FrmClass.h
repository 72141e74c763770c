#pragma once

#include "masters/DialogTransaction.h"

#include <QDialog>

#include <memory>

struct AppServices;

namespace Ui {
class FrmClass;
}

// "分類": add, rename, delete and order the classes of schedules and tasks.
// The dialog holds a transaction while it is open: inserts and deletes are written at once,
// names and order when OK is pressed, and OK commits it all. Any other way of closing
// (キャンセル, the close box, Escape) rolls everything back.
// exec() answers Accepted exactly when the changes were committed.
class FrmClass final : public QDialog
{
    Q_OBJECT
public:
    explicit FrmClass(AppServices& app, QWidget* parent = nullptr);
    ~FrmClass() override;

    // Every way of closing ends here; whatever was not committed is rolled back.
    void done(int result) override;

private:
    void Form_Load();
    void ComInsert_Click();
    void ComUpdate_Click();
    void ComDelete_Click();
    void ComUp_Click();
    void ComDn_Click();
    void ComOK_Click();
    void MoveLine(const QString& direction);
    int selectedRow() const;

    AppServices& m_app;
    std::unique_ptr<Ui::FrmClass> m_ui;
    DialogTransaction m_transaction;
};
