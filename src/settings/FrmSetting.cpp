#include "settings/FrmSetting.h"

#include "common/AppServices.h"
#include "common/Clock.h"
#include "common/Pickers.h"
#include "common/Prompter.h"
#include "common/Units.h"
#include "common/UserAction.h"
#include "shell/AutoStart.h"
#include "store/SqlText.h"
#include "ui_FrmSetting.h"

#include <QFileInfo>

namespace {

// The font as the dialog shows it: the name and its style words.
QString FontText(const QString& name, bool bold, bool italic)
{
    if (bold)
        return name + QStringLiteral(" - 太字") + (italic ? QStringLiteral(" 斜体") : QString());
    if (italic)
        return name + QStringLiteral(" - 斜体");
    return name;
}

// Sizes are single-precision numbers: 10.5 stays 10.5, 9 is written 9.
QString SizeText(double size)
{
    return QString::number(static_cast<double>(static_cast<float>(size)), 'g', 7);
}

// Booleans go into statements as the words the engine reads as 1 and 0.
QString BooleanWord(bool value)
{
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

bool IsSet(const Row& row, const QString& column)
{
    return row.text(column).trimmed() == QLatin1String("1");
}

void PaintSwatch(QFrame* swatch, const QColor& color)
{
    QPalette palette = swatch->palette();
    palette.setColor(QPalette::Window, color);
    swatch->setPalette(palette);
}

QColor SwatchColor(const QFrame* swatch)
{
    return swatch->palette().color(QPalette::Window);
}

void FillCombo(DatabaseConnection& db, QComboBox* combo, const QString& sql)
{
    combo->clear();
    for (const Row& row : db.ReadRows(sql))
        combo->addItem(row.text(QStringLiteral("DATAS1")), row.number(QStringLiteral("DATAN1")));
}

} // namespace

FrmSetting::FrmSetting(AppServices& app, QWidget* parent)
    : QDialog(parent), m_app(app), m_ui(std::make_unique<Ui::FrmSetting>()), m_transaction(app.db())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_ui->TxtHotKey->installEventFilter(this);
    connect(m_ui->ComBackup, &QPushButton::clicked, this, &FrmSetting::ComBackup_Click);
    connect(m_ui->ComReg, &QPushButton::clicked, this, &FrmSetting::ComReg_Click);
    connect(m_ui->ComBackColor, &QPushButton::clicked, this, &FrmSetting::ComBackColor_Click);
    connect(m_ui->ComForeColor, &QPushButton::clicked, this, &FrmSetting::ComForeColor_Click);
    connect(m_ui->ComFont, &QPushButton::clicked, this, &FrmSetting::ComFont_Click);
    connect(m_ui->ComDef, &QPushButton::clicked, this, &FrmSetting::ComDef_Click);
    connect(m_ui->ComSound, &QPushButton::clicked, this, &FrmSetting::ComSound_Click);
    connect(m_ui->ComOK, &QPushButton::clicked, this, &FrmSetting::ComOK_Click);
    connect(m_ui->ComCancel, &QPushButton::clicked, this, &QDialog::reject);
    Form_Load();
    // Connected after the load, which runs each handler once itself.
    connect(m_ui->CmbSpot, qOverload<int>(&QComboBox::currentIndexChanged), this, &FrmSetting::CmbSpot_Click);
    connect(m_ui->CmbHotKey, qOverload<int>(&QComboBox::currentIndexChanged), this, &FrmSetting::CmbHotKey_Click);
    connect(m_ui->OptBalloon, &QRadioButton::toggled, this, [this](bool on) {
        if (on)
            OptBalloon_Click();
    });
    connect(m_ui->OptMsgbox, &QRadioButton::toggled, this, [this](bool on) {
        if (on)
            OptMsgbox_Click();
    });
    connect(m_ui->ChkSound, &QCheckBox::toggled, this, &FrmSetting::ChkSound_Click);
}

FrmSetting::~FrmSetting() = default;

void FrmSetting::Form_Load()
{
    m_committed = false;
    const bool loaded = RunUserAction(m_app, parentWidget(), [this] {
        m_transaction.begin();
        loadChoices();
        loadHotKeys();
        loadOptions();
    });
    if (!loaded) {
        // Nothing trustworthy was read, so nothing may be written back: leave only the way out.
        for (QGroupBox* frame : {m_ui->Frame1, m_ui->Frame2, m_ui->Frame3, m_ui->Frame4})
            frame->setEnabled(false);
        m_ui->ComOK->setEnabled(false);
        m_ui->ComCancel->setDefault(true);
        return;
    }
    CmbSpot_Click();
    CmbHotKey_Click();
}

void FrmSetting::loadChoices()
{
    DatabaseConnection& db = m_app.db();
    m_ui->CmbSpot->clear();
    for (const Row& row : db.ReadRows(QStringLiteral("SELECT * ") + QStringLiteral("FROM TRNCOLOR ") +
                                      QStringLiteral("WHERE SETNUM = 0 ") + QStringLiteral("ORDER BY CODE")))
        m_ui->CmbSpot->addItem(row.text(QStringLiteral("SPOT")), row.number(QStringLiteral("CODE")));

    const QString select = QStringLiteral("SELECT * FROM TRNGENERAL ");
    const QString order = QStringLiteral("ORDER BY CODE ");
    FillCombo(db, m_ui->CmbTitle, select + QStringLiteral("WHERE 80600 <= CODE AND CODE < 80700 ") + order);
    FillCombo(db, m_ui->CmbFirstWeek, select + QStringLiteral("WHERE 80700 <= CODE AND CODE < 80800 ") + order);
    FillCombo(db, m_ui->CmbWeekFormat, select + QStringLiteral("WHERE 80800 <= CODE AND CODE < 80900 ") + order);
    FillCombo(db, m_ui->CmbAlarm, select + QStringLiteral("WHERE 80900 <= CODE AND CODE < 81000 ") + order);
    FillCombo(db, m_ui->CmbClear, select + QStringLiteral("WHERE CODE = 411 ") + QStringLiteral("ORDER BY DATAN1 "));
}

void FrmSetting::loadOptions()
{
    const Rows rows = m_app.db().ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL ") +
                                          QStringLiteral("WHERE 300 <= CODE AND CODE < 400 "));
    bool balloon = false;
    // Holidays show unless a row says otherwise; older databases have no row.
    m_ui->ChkHoliday->setChecked(true);
    for (const Row& row : rows) {
        const qint64 value = row.number(QStringLiteral("DATAN1"));
        switch (row.number(QStringLiteral("CODE"))) {
        case 301:
            SelectComboByItemData(m_ui->CmbTitle, value);
            break;
        case 302:
            SelectComboByItemData(m_ui->CmbFirstWeek, value);
            break;
        case 303:
            SelectComboByItemData(m_ui->CmbWeekFormat, value);
            break;
        case 304:
            SelectComboByItemData(m_ui->CmbAlarm, value);
            break;
        case 311:
            m_ui->ChkStay->setChecked(value != 0);
            break;
        case 312:
            m_ui->ChkAlwaysShow->setChecked(value != 0);
            break;
        case 313:
            SelectComboByItemData(m_ui->CmbClear, value);
            break;
        case 314:
            balloon = value != 0;
            break;
        case 315:
            m_ui->TxtSoundPath->setText(row.text(QStringLiteral("MEMO1")));
            break;
        case 316:
            m_ui->ChkSound->setChecked(value != 0);
            break;
        case 317:
            m_ui->ChkHoliday->setChecked(value != 0);
            break;
        default:
            break;
        }
    }
    // Not a database row: the desktop's autostart folder says whether the login starts us.
    m_autoStartLoaded = IsAutoStartEnabled();
    m_ui->ChkAutoStart->setChecked(m_autoStartLoaded);
    if (balloon) {
        m_ui->OptBalloon->setChecked(true);
        OptBalloon_Click();
    } else {
        m_ui->OptMsgbox->setChecked(true);
        OptMsgbox_Click();
    }
}

qint64 FrmSetting::selectedSpot() const
{
    return m_ui->CmbSpot->currentData().toLongLong();
}

void FrmSetting::CmbSpot_Click()
{
    if (m_ui->CmbSpot->currentIndex() < 0)
        return;
    RunUserAction(m_app, this, [this] {
        const Rows rows = m_app.db().ReadRows(QStringLiteral("SELECT * ") + QStringLiteral("FROM TRNCOLOR ") +
                                              QStringLiteral("WHERE CODE = ") + QString::number(selectedSpot()) +
                                              QStringLiteral(" ") + QStringLiteral("AND   SETNUM = 0 "));
        for (QWidget* control : {static_cast<QWidget*>(m_ui->LabBackColor), static_cast<QWidget*>(m_ui->ComBackColor),
                                 static_cast<QWidget*>(m_ui->LabFont), static_cast<QWidget*>(m_ui->LabSize),
                                 static_cast<QWidget*>(m_ui->LabForeColor), static_cast<QWidget*>(m_ui->TxtFont),
                                 static_cast<QWidget*>(m_ui->TxtSize), static_cast<QWidget*>(m_ui->ComFont),
                                 static_cast<QWidget*>(m_ui->ComForeColor)})
            control->setEnabled(true);
        // A spot whose row went missing offers nothing to change.
        const Row* row = rows.empty() ? nullptr : &rows.front();
        const QColor dialogColor = palette().color(QPalette::Window);

        if (row && IsSet(*row, QStringLiteral("SETBCOLOR"))) {
            PaintSwatch(m_ui->ShaBackColor, Units::ColorFromStored(row->number(QStringLiteral("BACKCOLOR"))));
        } else {
            m_ui->LabBackColor->setEnabled(false);
            m_ui->ComBackColor->setEnabled(false);
            PaintSwatch(m_ui->ShaBackColor, dialogColor);
        }

        if (row && IsSet(*row, QStringLiteral("SETFONT"))) {
            m_fontName = row->text(QStringLiteral("FOREFONT"));
            m_fontBold = row->number(QStringLiteral("FBOLD")) != 0;
            m_fontItalic = row->number(QStringLiteral("FITALIC")) != 0;
            m_ui->TxtSize->setText(SizeText(row->real(QStringLiteral("FSIZE"))));
            showFont();
        } else {
            // The texts keep what the previous spot showed; only the controls go grey.
            for (QWidget* control : {static_cast<QWidget*>(m_ui->LabFont), static_cast<QWidget*>(m_ui->LabSize),
                                     static_cast<QWidget*>(m_ui->TxtFont), static_cast<QWidget*>(m_ui->TxtSize),
                                     static_cast<QWidget*>(m_ui->ComFont)})
                control->setEnabled(false);
        }

        if (row && IsSet(*row, QStringLiteral("SETFCOLOR"))) {
            PaintSwatch(m_ui->ShaForeColor, Units::ColorFromStored(row->number(QStringLiteral("FORECOLOR"))));
        } else {
            m_ui->LabForeColor->setEnabled(false);
            m_ui->ComForeColor->setEnabled(false);
            PaintSwatch(m_ui->ShaForeColor, dialogColor);
        }
    });
}

void FrmSetting::showFont()
{
    m_ui->TxtFont->setText(FontText(m_fontName, m_fontBold, m_fontItalic));
    m_ui->TxtFont->setCursorPosition(0);
}

void FrmSetting::ComBackColor_Click()
{
    changeColor(m_ui->ShaBackColor, QStringLiteral("BACKCOLOR"));
}

void FrmSetting::ComForeColor_Click()
{
    changeColor(m_ui->ShaForeColor, QStringLiteral("FORECOLOR"));
}

void FrmSetting::changeColor(QFrame* swatch, const QString& column)
{
    const QColor preset = SwatchColor(swatch);
    std::optional<QColor> chosen;
    if (m_app.colorPicker)
        chosen = m_app.colorPicker->pickColor(this, preset);
    // A cancelled picker answers the colour it started from, which is written all the same.
    const QColor color = chosen.value_or(preset);
    PaintSwatch(swatch, color);
    RunUserAction(m_app, this, [&] {
        m_app.db().ExecuteSql(QStringLiteral("UPDATE TRNCOLOR ") + QStringLiteral("SET ") + column +
                              QStringLiteral(" = ") + QString::number(Units::ColorToStored(color)) +
                              QStringLiteral(" ") + QStringLiteral("WHERE CODE = ") + QString::number(selectedSpot()) +
                              QStringLiteral(" ") + QStringLiteral("AND SETNUM = 0 "));
    });
}

void FrmSetting::ComFont_Click()
{
    if (!m_app.fontPicker)
        return;
    FontChoice initial;
    initial.name = m_fontName;
    bool sizeRead = false;
    initial.size = static_cast<double>(m_ui->TxtSize->text().toFloat(&sizeRead));
    if (!sizeRead || initial.size <= 0)
        initial.size = 9;
    initial.bold = m_fontBold;
    initial.italic = m_fontItalic;
    const std::optional<FontChoice> chosen = m_app.fontPicker->pickFont(this, initial);
    if (!chosen || chosen->name.trimmed().isEmpty())
        return;
    const double size = chosen->size > 0 ? chosen->size : initial.size;
    m_fontName = chosen->name;
    m_fontBold = chosen->bold;
    m_fontItalic = chosen->italic;
    m_ui->TxtSize->setText(SizeText(size));
    showFont();
    RunUserAction(m_app, this, [&] {
        m_app.db().ExecuteSql(
            QStringLiteral("UPDATE TRNCOLOR SET ") + QStringLiteral("FOREFONT = ") + QuoteText(m_fontName) +
            QStringLiteral(", ") + QStringLiteral("FSIZE = ") + SizeText(size) + QStringLiteral(", ") +
            QStringLiteral("FBOLD = ") + BooleanWord(m_fontBold) + QStringLiteral(", ") + QStringLiteral("FITALIC = ") +
            BooleanWord(m_fontItalic) + QStringLiteral(" ") + QStringLiteral("WHERE CODE = ") +
            QString::number(selectedSpot()) + QStringLiteral(" ") + QStringLiteral("AND SETNUM = 0 "));
    });
}

void FrmSetting::ComDef_Click()
{
    if (!m_app.prompter->confirm(this, QStringLiteral("カレンダーの設定を初期化してよろしいですか")))
        return;
    // Every spot goes back to its shipped design, not only the one shown; the controls
    // show the defaults once a spot is chosen again.
    RunUserAction(m_app, this, [this] {
        DatabaseConnection& db = m_app.db();
        const Rows rows = db.ReadRows(QStringLiteral("SELECT * ") + QStringLiteral("FROM TRNCOLOR ") +
                                      QStringLiteral("WHERE SETNUM = 0 "));
        for (const Row& row : rows) {
            const QString stamp = row.isNull(QStringLiteral("UPDTIME"))
                                      ? QStringLiteral("IS NULL")
                                      : QStringLiteral("= ") + DateLiteral(row.text(QStringLiteral("UPDTIME")));
            db.ExecuteSql(QStringLiteral("UPDATE TRNCOLOR SET ") + QStringLiteral("BACKCOLOR = ") +
                          QString::number(row.number(QStringLiteral("DBACKCOLOR"))) + QStringLiteral(", ") +
                          QStringLiteral("FOREFONT = ") + QuoteText(row.text(QStringLiteral("DFOREFONT"))) +
                          QStringLiteral(", ") + QStringLiteral("FSIZE = ") +
                          SizeText(row.real(QStringLiteral("DFSIZE"))) + QStringLiteral(", ") +
                          QStringLiteral("FBOLD = ") + BooleanWord(row.number(QStringLiteral("DFBOLD")) != 0) +
                          QStringLiteral(", ") + QStringLiteral("FITALIC = ") +
                          BooleanWord(row.number(QStringLiteral("DFITALIC")) != 0) + QStringLiteral(", ") +
                          QStringLiteral("FORECOLOR = ") + QString::number(row.number(QStringLiteral("DFORECOLOR"))) +
                          QStringLiteral(" ") + QStringLiteral("WHERE CODE = ") +
                          QString::number(row.number(QStringLiteral("CODE"))) + QStringLiteral(" ") +
                          QStringLiteral("AND SETNUM = ") + QString::number(row.number(QStringLiteral("SETNUM"))) +
                          QStringLiteral(" ") + QStringLiteral("AND UPDTIME ") + stamp);
        }
    });
}

void FrmSetting::OptBalloon_Click()
{
    m_ui->ChkSound->setEnabled(true);
    ChkSound_Click();
}

void FrmSetting::OptMsgbox_Click()
{
    m_ui->ChkSound->setEnabled(false);
    m_ui->TxtSoundPath->setEnabled(false);
    m_ui->ComSound->setEnabled(false);
}

void FrmSetting::ChkSound_Click()
{
    // The sound belongs to the balloon: with message boxes the path stays grey whatever the check.
    const bool on = m_ui->ChkSound->isChecked() && m_ui->ChkSound->isEnabled();
    m_ui->TxtSoundPath->setEnabled(on);
    m_ui->ComSound->setEnabled(on);
}

void FrmSetting::ComSound_Click()
{
    if (!m_app.filePicker)
        return;
    FileRequest request;
    request.mode = FileRequest::Mode::Open;
    request.title = QStringLiteral("サウンド");
    const QString current = m_ui->TxtSoundPath->text().trimmed();
    request.fileName = current.isEmpty() ? QStringLiteral("*.wav") : current;
    request.defaultSuffix = QStringLiteral("wav");
    request.filter = QStringLiteral("サウンド(*.wav)");
    const QString chosen = m_app.filePicker->pickFile(this, request);
    if (!chosen.isEmpty() && chosen != QLatin1String("*.wav"))
        m_ui->TxtSoundPath->setText(chosen);
}

bool FrmSetting::soundPathAccepted()
{
    if (!m_ui->TxtSoundPath->isEnabled())
        return true;
    const QString path = m_ui->TxtSoundPath->text().trimmed();
    const QFileInfo file(path);
    if (!path.isEmpty() && file.isFile() && file.isReadable())
        return true;
    // An alarm that should sound and cannot would fail silently later; say so now.
    m_app.prompter->inform(this,
                           path.isEmpty() ? QStringLiteral("サウンドファイルを指定してください。")
                                          : QStringLiteral("サウンドファイルが見つかりません。\n") + path,
                           PromptIcon::Warning);
    m_ui->TxtSoundPath->setFocus();
    SelectAllText(m_ui->TxtSoundPath);
    return false;
}

void FrmSetting::ComOK_Click()
{
    if (m_ui->TxtHotKey->hasFocus())
        TxtHotKey_LostFocus();
    if (!soundPathAccepted() || !autoStartWritten())
        return;
    const bool saved = RunUserAction(m_app, this, [this] {
        writeOptions();
        m_transaction.commit();
        m_committed = true;
    });
    if (saved)
        accept();
}

bool FrmSetting::autoStartWritten()
{
    const bool wanted = m_ui->ChkAutoStart->isChecked();
    if (wanted == m_autoStartLoaded)
        return true;
    QString error;
    if (!SetAutoStart(wanted, CurrentAutoStartCommand(), &error)) {
        // The dialog stays open with every choice as made, so OK can be pressed again.
        m_app.prompter->inform(this, error, PromptIcon::Warning);
        m_ui->ChkAutoStart->setFocus();
        return false;
    }
    m_autoStartLoaded = wanted;
    return true;
}

void FrmSetting::writeOptions()
{
    DatabaseConnection& db = m_app.db();
    const auto update = [&db](int code, const QString& set) {
        db.ExecuteSql(QStringLiteral("UPDATE TRNGENERAL ") + set + QStringLiteral("WHERE CODE = ") +
                      QString::number(code) + QStringLiteral(" "));
    };
    const auto number = [](qint64 value) { return QStringLiteral("SET DATAN1 = ") + QString::number(value) + " "; };
    // A list the database has no rows for holds no selection; its option is left alone.
    const auto choice = [&](int code, const QComboBox* combo) {
        if (combo->currentIndex() >= 0)
            update(code, number(combo->currentData().toLongLong()));
    };
    choice(301, m_ui->CmbTitle);
    choice(302, m_ui->CmbFirstWeek);
    choice(303, m_ui->CmbWeekFormat);
    choice(304, m_ui->CmbAlarm);
    writeHotKeys();
    update(311, number(m_ui->ChkStay->isChecked() ? 1 : 0));
    update(312, number(m_ui->ChkAlwaysShow->isChecked() ? 1 : 0));
    choice(313, m_ui->CmbClear);
    update(314, number(m_ui->OptMsgbox->isChecked() ? 0 : 1));
    update(316, number(m_ui->ChkSound->isChecked() ? 1 : 0));
    update(315, QStringLiteral("SET MEMO1 = ") + QuoteText(m_ui->TxtSoundPath->text()) + QStringLiteral(" "));
    // "祝日を表示" came after the other options: a database from before it gets its row here.
    if (db.ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 317 ")).empty())
        db.ExecuteSql(QStringLiteral("INSERT INTO TRNGENERAL (CODE,DATAS1,DATAS2,DATAS3,DATAS4,DATAS5,DATAN1,DATAN2,"
                                     "DATAN3,DATAN4,DATAN5,MEMO1,UPDTIME) VALUES ( 317, '', '', '', '', '', 1, 0, 0, "
                                     "0, 0, '', ") +
                      DateLiteral(m_app.clock->now()) + QStringLiteral(" ) "));
    update(317, number(m_ui->ChkHoliday->isChecked() ? 1 : 0));
}

void FrmSetting::done(int result)
{
    // Only OK commits, before it gets here; whatever is still open was not confirmed.
    m_transaction.rollback();
    QDialog::done(result);
}
