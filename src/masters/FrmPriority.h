#pragma once

#include "masters/DialogTransaction.h"

#include <QDialog>

#include <memory>

struct AppServices;

namespace Ui {
class FrmPriority;
}

// The names of the task priorities. Their number and order are fixed; the user renames
// them one by one, and OK writes them all back in the transaction the dialog holds while
// it is open. Any other close rolls the renames back.
// exec() answers Accepted exactly when the names were written (PriorityChanged()).
class FrmPriority final : public QDialog
{
    Q_OBJECT
public:
    explicit FrmPriority(AppServices& app, QWidget* parent = nullptr);
    ~FrmPriority() override;

    // True once OK has written and committed the names: the task editor refills its list.
    bool PriorityChanged() const { return m_priorityChanged; }

    // Every way of closing ends here; whatever was not committed is rolled back.
    void done(int result) override;

private:
    void Form_Load();
    void ComUpdate_Click();
    void ComOK_Click();

    AppServices& m_app;
    std::unique_ptr<Ui::FrmPriority> m_ui;
    DialogTransaction m_transaction;
    bool m_priorityChanged = false;
};
