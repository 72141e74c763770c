#pragma once

#include "masters/DialogTransaction.h"
#include "settings/HotKeys.h"

#include <QDialog>

#include <memory>
#include <vector>

class QComboBox;
class QFrame;
struct AppServices;

namespace Ui {
class FrmSetting;
}

// "設定": the colours and fonts of each spot of the calendar, the display and alarm
// options, the hot keys and data maintenance. Colour, font and reset changes are written
// the moment they are made, inside a transaction the dialog holds while it is open; OK
// writes the options and commits, any other close rolls everything back.
// exec() answers Accepted exactly when OK committed (SettingCommitted()).
class FrmSetting final : public QDialog
{
    Q_OBJECT
public:
    explicit FrmSetting(AppServices& app, QWidget* parent = nullptr);
    ~FrmSetting() override;

    bool SettingCommitted() const { return m_committed; }

    // Every way of closing ends here; whatever was not committed is rolled back.
    void done(int result) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Design and options (FrmSetting.cpp).
    void Form_Load();
    void CmbSpot_Click();
    void ComBackColor_Click();
    void ComForeColor_Click();
    void ComFont_Click();
    void ComDef_Click();
    void OptBalloon_Click();
    void OptMsgbox_Click();
    void ChkSound_Click();
    void ComSound_Click();
    void ComOK_Click();

    void loadChoices();
    void loadOptions();
    void changeColor(QFrame* swatch, const QString& column);
    void showFont();
    qint64 selectedSpot() const;
    bool soundPathAccepted();
    bool autoStartWritten();
    void writeOptions();

    // Hot keys (FrmSettingHotKeys.cpp).
    void loadHotKeys();
    void CmbHotKey_Click();
    void TxtHotKey_KeyDown(int keyCode, int mask);
    void TxtHotKey_LostFocus();
    void showHotKeyNote();
    void writeHotKeys();
    int hotKeyIndex() const;

    // Data maintenance (FrmSettingBackup.cpp).
    void ComBackup_Click();
    void ComReg_Click();

    AppServices& m_app;
    std::unique_ptr<Ui::FrmSetting> m_ui;
    DialogTransaction m_transaction;
    bool m_committed = false;
    // Whether the autostart entry was on when the dialog opened: an unchanged box leaves
    // the file (perhaps edited by hand) alone.
    bool m_autoStartLoaded = false;

    // The shown spot's font as the font picker starts from it: the name without the
    // style words, and the two style flags.
    QString m_fontName;
    bool m_fontBold = false;
    bool m_fontItalic = false;

    // The bindings as edited, indexed like CmbHotKey's items, and the one being captured.
    std::vector<HotKeyBinding> m_hotKeys;
    HotKeyBinding m_pendingHotKey;
};
