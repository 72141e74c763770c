#include "entries/FrmSchedule.h"

#include "common/AppServices.h"
#include "common/Clock.h"
#include "common/UserAction.h"
#include "entries/ClassCombo.h"
#include "entries/EditorCommon.h"
#include "entries/EntryKinds.h"
#include "entries/EntryStatements.h"
#include "entries/LinkLabels.h"
#include "entries/TypedDateTime.h"
#include "store/NewId.h"
#include "store/SqlText.h"
#include "ui_FrmSchedule.h"

#include <QMetaObject>
#include <QTimer>

namespace {
const QString CrLf = QStringLiteral("\r\n");
constexpr int PickerLeftOffset = 50; // twips right of the date box
} // namespace

FrmSchedule::FrmSchedule(AppServices& app, ScheduleHandOver& handOver, QWidget* parent)
    : EntryEditorDialog(app, parent), m_handOver(handOver), m_ui(std::make_unique<Ui::FrmSchedule>())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);

    connect(m_ui->ComOK, &QPushButton::clicked, this, &FrmSchedule::ComOK_Click);
    connect(m_ui->ComCancel, &QPushButton::clicked, this, &QDialog::reject);

    OnFocusChange(m_ui->CmbStartTime, nullptr, [this] { CmbStartTime_LostFocus(); });
    OnFocusChange(m_ui->CmbEndTime, nullptr, [this] { CmbEndTime_LostFocus(); });
    OnFocusChange(
        m_ui->TxtStartDate, [this] { SelectAllText(m_ui->TxtStartDate); }, [this] { TxtStartDate_LostFocus(); });
    OnFocusChange(
        m_ui->TxtEndDate, [this] { TxtEndDate_GotFocus(); }, nullptr);
    OnFocusChange(
        m_ui->TxtYouken, [this] { SelectAllText(m_ui->TxtYouken); }, nullptr);

    m_links = new LinkLabelGroup(this);
    m_links->add(m_ui->LabStartDate, [this] { LabStartDate_Click(); });
    m_links->add(m_ui->LabEndDate, [this] { LabEndDate_Click(); });
    m_links->add(m_ui->LabClass, [this] { LabClass_Click(); });

    Form_Load();
}

FrmSchedule::~FrmSchedule() = default;

void FrmSchedule::Form_Load()
{
    const bool loaded = RunUserAction(m_app, parentWidget(), [this] {
        DatabaseConnection& db = m_app.db();
        FillClassCombo(db, m_ui->CmbBunrui,
                       QStringLiteral("SELECT * ") + QStringLiteral("FROM MSTCLASS ") +
                           QStringLiteral("ORDER BY SORTKEY "));
        FillTimeCombos(db, {m_ui->CmbStartTime, m_ui->CmbEndTime});

        if (m_handOver.ScheduleEditMode == QLatin1String("UPD")) {
            const Rows rows = db.ReadRows(QStringLiteral("SELECT * ") + QStringLiteral("FROM TRNSCHTSK WHERE ID = ") +
                                          QString::number(m_handOver.ScheduleEditId) + QStringLiteral(" "));
            if (rows.empty()) {
                // Deleted meanwhile (from the list, say): there is nothing left to edit.
                m_closeAtOnce = true;
                return;
            }
            const Row& row = rows.front();
            const auto boxDate = [](const QString& stored) {
                return stored.isEmpty() ? QString() : DateBoxText(StoredDateToDate(stored));
            };
            m_loadedUpdTime = row.text(QStringLiteral("UPDTIME"));
            m_ui->TxtYouken->setText(row.text(QStringLiteral("BUSINESS")));
            m_ui->TxtStartDate->setText(boxDate(row.text(QStringLiteral("STARTDT"))));
            m_ui->CmbStartTime->setEditText(row.text(QStringLiteral("STARTTM")));
            m_ui->TxtEndDate->setText(boxDate(row.text(QStringLiteral("ENDDT"))));
            m_ui->CmbEndTime->setEditText(row.text(QStringLiteral("ENDTM")));
            m_ui->ChkAraamu->setChecked(row.text(QStringLiteral("ALARM")) == QLatin1String("1"));
            SelectComboByItemData(m_ui->CmbBunrui, row.number(QStringLiteral("CLASS")));
            m_ui->TxtSyousai->setPlainText(row.text(QStringLiteral("COMMENT")));
        } else {
            m_ui->TxtStartDate->setText(DateBoxText(m_handOver.ScheduleDate));
        }
    });
    // Without its lists or its row the dialog could only save nonsense.
    if (!loaded)
        m_closeAtOnce = true;
}

void FrmSchedule::CmbStartTime_LostFocus()
{
    NormaliseTimeBox(m_ui->CmbStartTime);
}

void FrmSchedule::CmbEndTime_LostFocus()
{
    NormaliseTimeBox(m_ui->CmbEndTime);
}

void FrmSchedule::TxtStartDate_LostFocus()
{
    NormaliseDateBox(m_ui->TxtStartDate, todayYear());
}

void FrmSchedule::TxtEndDate_GotFocus()
{
    // A span usually ends near where it starts: offer the start date to edit.
    if (m_ui->TxtEndDate->text().isEmpty() && ParseTypedDate(m_ui->TxtStartDate->text(), todayYear()).isValid())
        m_ui->TxtEndDate->setText(m_ui->TxtStartDate->text());
}

void FrmSchedule::LabStartDate_Click()
{
    PickDateInto(m_app, this, m_ui->TxtStartDate, PickerLeftOffset);
}

void FrmSchedule::LabEndDate_Click()
{
    PickDateInto(m_app, this, m_ui->TxtEndDate, PickerLeftOffset);
}

void FrmSchedule::LabClass_Click()
{
    EditClasses(m_ui->CmbBunrui);
}

bool FrmSchedule::validate()
{
    const int year = todayYear();
    const QString startText = m_ui->TxtStartDate->text();
    const QString endText = m_ui->TxtEndDate->text().trimmed();
    if (m_ui->TxtYouken->text().trimmed().isEmpty()) {
        WarnUser(m_app, this, QStringLiteral("予定を入力してください"));
        m_ui->TxtYouken->setFocus();
        return false;
    }
    if (startText.isEmpty()) {
        WarnUser(m_app, this, QStringLiteral("開始日付を入力してください"));
        m_ui->TxtStartDate->setFocus();
        return false;
    }
    const QDate start = ParseTypedDate(startText, year);
    const QDate end = ParseTypedDate(endText, year);
    // An end date that reads as no date is as wrong as one before the start.
    if (!endText.isEmpty() && (!end.isValid() || end < start)) {
        WarnUser(m_app, this, QStringLiteral("日時の開始と終了日付が正しくありません"));
        m_ui->TxtEndDate->setFocus();
        return false;
    }
    const QString startTime = m_ui->CmbStartTime->currentText();
    const QString endTime = m_ui->CmbEndTime->currentText();
    if (!startTime.isEmpty() && !endTime.isEmpty() && (endText.isEmpty() || end == start) &&
        ParseTypedTime(endTime) < ParseTypedTime(startTime)) {
        WarnUser(m_app, this, QStringLiteral("日時の開始と終了時間が正しくありません"));
        m_ui->CmbEndTime->setFocus();
        return false;
    }
    if (HasQuote(m_ui->TxtYouken->text())) {
        WarnUser(m_app, this,
                 QStringLiteral("[ ' ]の文字は入力できません。") + CrLf + QStringLiteral("予定が正しくありません。"));
        return false;
    }
    if (HasQuote(m_ui->TxtSyousai->toPlainText())) {
        WarnUser(m_app, this,
                 QStringLiteral("[ ' ]の文字は入力できません。") + CrLf + QStringLiteral("詳細が正しくありません。"));
        return false;
    }
    return true;
}

bool FrmSchedule::save()
{
    const int year = todayYear();
    EntryValues values;
    values.DATA = QStringLiteral("1");
    values.BUSINESS = m_ui->TxtYouken->text();
    values.STARTDT = DateToStored(ParseTypedDate(m_ui->TxtStartDate->text(), year));
    values.STARTTM = m_ui->CmbStartTime->currentText();
    const QString endText = m_ui->TxtEndDate->text().trimmed();
    values.ENDDT = endText.isEmpty() ? QString() : DateToStored(ParseTypedDate(endText, year));
    values.ENDTM = m_ui->CmbEndTime->currentText();
    values.ALARM = m_ui->ChkAraamu->isChecked() ? QStringLiteral("1") : QStringLiteral("0");
    values.PRIORITY = 0;
    values.COMMENT = m_ui->TxtSyousai->toPlainText();
    values.FROMTOKBN = KindCode(values.STARTDT, values.STARTTM, values.ENDDT, values.ENDTM);

    const bool adding = m_handOver.ScheduleEditMode != QLatin1String("UPD");
    qint64 newId = 0;
    // A class created here is rolled back with a failed save, so the combo must forget it too.
    const ComboSnapshot classes(m_ui->CmbBunrui);
    const bool saved = RunUserAction(m_app, this, [&] {
        DatabaseConnection& db = m_app.db();
        const QDateTime now = m_app.clock->now();
        db.BeginTrans();
        values.CLASS = EnsureClassFromCombo(db, m_ui->CmbBunrui);
        if (adding) {
            newId = NextId(db, QStringLiteral("TRNSCHTSK"));
            values.ID = newId;
            db.ExecuteSql(EntryInsertSql(values, now));
        } else {
            values.ID = m_handOver.ScheduleEditId;
            // The count of changed rows is not looked at: a row changed by someone else since
            // it was loaded simply keeps their version.
            db.ExecuteSql(ScheduleUpdateSql(values, now, m_loadedUpdTime));
        }
        db.CommitTrans();
    });
    if (!saved) {
        classes.restore();
        return false;
    }
    if (adding)
        m_handOver.ScheduleEditId = static_cast<int>(newId);
    return true;
}

QString FrmSchedule::postText() const
{
    const int year = todayYear();
    const QString startDay = ParseTypedDate(m_ui->TxtStartDate->text(), year).toString(QStringLiteral("MM/dd"));
    const QString startTime = m_ui->CmbStartTime->currentText();
    const QString endTime = m_ui->CmbEndTime->currentText();
    const QString endText = m_ui->TxtEndDate->text().trimmed();
    QString text = startDay + QStringLiteral(" ") + startTime;
    if (!endText.isEmpty()) {
        const QString endDay = ParseTypedDate(endText, year).toString(QStringLiteral("MM/dd"));
        text += QStringLiteral(" - ") + endDay + QStringLiteral(" ") + endTime;
    } else if (!endTime.isEmpty()) {
        text += QStringLiteral(" - ") + endTime;
    }
    return text + CrLf + m_ui->TxtYouken->text() + CrLf + m_ui->TxtSyousai->toPlainText();
}

void FrmSchedule::ComOK_Click()
{
    // Enter on the default button leaves the focus where it was: tidy the typed dates and
    // times as leaving their boxes would have.
    TxtStartDate_LostFocus();
    CmbStartTime_LostFocus();
    CmbEndTime_LostFocus();
    if (!validate())
        return;
    if (!save())
        return;
    m_handOver.PostRequested = m_ui->ChkPost->isChecked();
    if (m_handOver.PostRequested) {
        m_handOver.PostText = postText();
        m_handOver.PostColorIndex = RandomPostColor(m_app);
    }
    m_handOver.ScheduleSaved = true;
    accept();
}
