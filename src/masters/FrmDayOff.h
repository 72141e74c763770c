#pragma once

#include "masters/DialogTransaction.h"

#include <QDialog>

#include <memory>

struct AppServices;

namespace Ui {
class FrmDayOff;
}

// "休日設定": the yearly day-offs in calendar order. New, edit and delete are written at
// once inside the transaction the dialog holds while it is open; OK commits them all and
// any other close rolls them back.
// exec() answers Accepted exactly when the changes were committed.
class FrmDayOff final : public QDialog
{
    Q_OBJECT
public:
    explicit FrmDayOff(AppServices& app, QWidget* parent = nullptr);
    ~FrmDayOff() override;

    // Every way of closing ends here; whatever was not committed is rolled back.
    void done(int result) override;

private:
    void Form_Load();
    void ComADD_Click();
    void ComUpd_Click();
    void ComDel_Click();
    void ComOK_Click();
    // Reads the list anew; the line of selectKey (month × 100 + day) is selected after.
    void FillList(int selectKey);
    int selectedKey() const;

    AppServices& m_app;
    std::unique_ptr<Ui::FrmDayOff> m_ui;
    DialogTransaction m_transaction;
};
