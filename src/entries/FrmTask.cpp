#include "entries/FrmTask.h"

#include "common/AppServices.h"
#include "common/Clock.h"
#include "common/UserAction.h"
#include "entries/ClassCombo.h"
#include "entries/EditorCommon.h"
#include "entries/EntryKinds.h"
#include "entries/EntryStatements.h"
#include "entries/LinkLabels.h"
#include "entries/TypedDateTime.h"
#include "masters/FrmPriority.h"
#include "store/NewId.h"
#include "store/SqlText.h"
#include "ui_FrmTask.h"

#include <QMetaObject>

namespace {
const QString CrLf = QStringLiteral("\r\n");
constexpr int PickerLeftOffset = 100; // twips right of the date box
const QString PrioritySql = QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 100 ORDER BY DATAN1");
} // namespace

FrmTask::FrmTask(AppServices& app, TaskHandOver& handOver, QWidget* parent)
    : EntryEditorDialog(app, parent), m_handOver(handOver), m_ui(std::make_unique<Ui::FrmTask>())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);

    connect(m_ui->ComOK, &QPushButton::clicked, this, &FrmTask::ComOK_Click);
    connect(m_ui->ComCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_ui->ChkEnd, &QCheckBox::toggled, this, &FrmTask::ChkEnd_Click);
    connect(m_ui->ChkEndNon, &QCheckBox::toggled, this, &FrmTask::ChkEndNon_Click);

    OnFocusChange(
        m_ui->TxtEndDate, [this] { SelectAllText(m_ui->TxtEndDate); }, [this] { TxtEndDate_LostFocus(); });
    OnFocusChange(m_ui->CmbEndTime, nullptr, [this] { CmbEndTime_LostFocus(); });
    OnFocusChange(m_ui->TxtEnd, nullptr, [this] { TxtEnd_LostFocus(); });
    OnFocusChange(
        m_ui->TxtYouken, [this] { SelectAllText(m_ui->TxtYouken); }, nullptr);

    m_links = new LinkLabelGroup(this);
    m_links->add(m_ui->LabEndDate, [this] { LabEndDate_Click(); });
    m_links->add(m_ui->LabEnd, [this] { LabEnd_Click(); });
    m_links->add(m_ui->LabClass, [this] { LabClass_Click(); });
    m_links->add(m_ui->LabPriority, [this] { LabPriority_Click(); });

    Form_Load();
}

FrmTask::~FrmTask() = default;

void FrmTask::fillPriorities()
{
    const Rows rows = m_app.db().ReadRows(PrioritySql);
    m_ui->CmbYusen->clear();
    qint64 defaultPriority = -1;
    for (const Row& row : rows) {
        m_ui->CmbYusen->addItem(row.text(QStringLiteral("DATAS1")), row.number(QStringLiteral("DATAN1")));
        if (row.number(QStringLiteral("DATAN2")) != 0 && defaultPriority < 0)
            defaultPriority = row.number(QStringLiteral("DATAN1"));
    }
    if (defaultPriority >= 0)
        SelectComboByItemData(m_ui->CmbYusen, defaultPriority);
    else
        m_ui->CmbYusen->setCurrentIndex(m_ui->CmbYusen->count() > 0 ? 0 : -1);
}

void FrmTask::Form_Load()
{
    const bool loaded = RunUserAction(m_app, parentWidget(), [this] {
        DatabaseConnection& db = m_app.db();
        FillTimeCombos(db, {m_ui->CmbEndTime});
        FillClassCombo(db, m_ui->CmbBunrui,
                       QStringLiteral("SELECT * ") + QStringLiteral("FROM MSTCLASS ") +
                           QStringLiteral("ORDER BY SORTKEY "));
        fillPriorities();

        if (m_handOver.TaskEditMode == QLatin1String("UPD")) {
            const Rows rows = db.ReadRows(QStringLiteral("SELECT * ") + QStringLiteral("FROM TRNSCHTSK WHERE ID = ") +
                                          QString::number(m_handOver.TaskEditId) + QStringLiteral(" "));
            if (rows.empty()) {
                m_closeAtOnce = true;
                return;
            }
            const Row& row = rows.front();
            const QString deadline = row.text(QStringLiteral("ENDDT"));
            m_loadedUpdTime = row.text(QStringLiteral("UPDTIME"));
            m_loadedPriority = row.number(QStringLiteral("PRIORITY"));
            m_ui->TxtYouken->setText(row.text(QStringLiteral("BUSINESS")));
            m_ui->TxtEndDate->setText(deadline.isEmpty() ? QString() : DateBoxText(StoredDateToDate(deadline)));
            m_ui->CmbEndTime->setEditText(row.text(QStringLiteral("ENDTM")));
            m_ui->ChkEndNon->setChecked(row.text(QStringLiteral("ENDLESS")) == QLatin1String("1"));
            SelectComboByItemData(m_ui->CmbYusen, m_loadedPriority);
            SelectComboByItemData(m_ui->CmbBunrui, row.number(QStringLiteral("CLASS")));
            m_ui->TxtSyousai->setPlainText(row.text(QStringLiteral("COMMENT")));
            m_ui->ChkEnd->setChecked(row.text(QStringLiteral("COMPLETION")) == QLatin1String("1"));
            // An empty completion date shows as the no-date value 0100/01/01.
            m_ui->TxtEnd->setText(
                deadline.isEmpty() ? QString() : DateBoxText(StoredDateToDate(row.text(QStringLiteral("COMPDT")))));
        } else {
            m_ui->TxtEndDate->setText(DateBoxText(m_handOver.TaskDate));
            // Ready for the day the task gets done; the box stays disabled until then.
            m_ui->TxtEnd->setText(DateBoxText(m_handOver.TaskDate));
            m_ui->ChkEnd->setChecked(false);
        }
    });
    ChkEnd_Click();
    ChkEndNon_Click();
    if (!loaded)
        m_closeAtOnce = true;
}

void FrmTask::ChkEnd_Click()
{
    const bool done = m_ui->ChkEnd->isChecked();
    m_ui->TxtEnd->setEnabled(done);
    m_ui->LabEnd->setEnabled(done);
}

void FrmTask::ChkEndNon_Click()
{
    // The deadline stays in the boxes (and is saved): it only stops counting as one.
    const bool open = !m_ui->ChkEndNon->isChecked();
    m_ui->TxtEndDate->setEnabled(open);
    m_ui->LabEndDate->setEnabled(open);
    m_ui->CmbEndTime->setEnabled(open);
}

void FrmTask::TxtEndDate_LostFocus()
{
    NormaliseDateBox(m_ui->TxtEndDate, todayYear());
}

void FrmTask::CmbEndTime_LostFocus()
{
    NormaliseTimeBox(m_ui->CmbEndTime);
}

void FrmTask::TxtEnd_LostFocus()
{
    NormaliseDateBox(m_ui->TxtEnd, todayYear());
}

void FrmTask::LabEndDate_Click()
{
    PickDateInto(m_app, this, m_ui->TxtEndDate, PickerLeftOffset);
}

void FrmTask::LabEnd_Click()
{
    PickDateInto(m_app, this, m_ui->TxtEnd, PickerLeftOffset);
}

void FrmTask::LabClass_Click()
{
    EditClasses(m_ui->CmbBunrui);
}

void FrmTask::LabPriority_Click()
{
    FrmPriority editor(m_app, this);
    editor.exec();
    if (!editor.PriorityChanged())
        return;
    // The priorities keep their numbers when renamed: keep the one that was chosen.
    const QVariant chosen = m_ui->CmbYusen->currentData();
    RunUserAction(m_app, this, [this] {
        const Rows rows = m_app.db().ReadRows(PrioritySql);
        m_ui->CmbYusen->clear();
        for (const Row& row : rows)
            m_ui->CmbYusen->addItem(row.text(QStringLiteral("DATAS1")), row.number(QStringLiteral("DATAN1")));
    });
    if (chosen.isValid())
        SelectComboByItemData(m_ui->CmbYusen, chosen.toLongLong());
}

bool FrmTask::validate()
{
    if (m_ui->TxtYouken->text().trimmed().isEmpty()) {
        WarnUser(m_app, this, QStringLiteral("タスク名を入力してください"));
        m_ui->TxtYouken->setFocus();
        return false;
    }
    // Unlike the schedule editor this rule only warns; the task is saved all the same.
    if (HasQuote(m_ui->TxtYouken->text()))
        WarnUser(m_app, this,
                 QStringLiteral("[ ' ]の文字は入力できません。") + CrLf +
                     QStringLiteral("タスク名が正しくありません。"));
    if (m_ui->TxtEndDate->text().isEmpty()) {
        WarnUser(m_app, this, QStringLiteral("期限を入力してください"));
        if (m_ui->TxtEndDate->isEnabled())
            m_ui->TxtEndDate->setFocus();
        return false;
    }
    return true;
}

bool FrmTask::save()
{
    const int year = todayYear();
    EntryValues values;
    values.DATA = QStringLiteral("2");
    values.BUSINESS = m_ui->TxtYouken->text();
    values.ENDDT = DateToStored(ParseTypedDate(m_ui->TxtEndDate->text(), year));
    values.ENDTM = m_ui->CmbEndTime->currentText();
    values.ENDLESS = m_ui->ChkEndNon->isChecked() ? QStringLiteral("1") : QStringLiteral("0");
    const QVariant priority = m_ui->CmbYusen->currentData();
    values.PRIORITY = priority.isValid() ? priority.toLongLong() : m_loadedPriority;
    values.COMPLETION = m_ui->ChkEnd->isChecked() ? QStringLiteral("1") : QStringLiteral("0");
    // Written whether or not the task is done: a new task carries its due day here.
    values.COMPDT =
        m_ui->TxtEnd->text().isEmpty() ? QString() : DateToStored(ParseTypedDate(m_ui->TxtEnd->text(), year));
    values.COMMENT = m_ui->TxtSyousai->toPlainText();
    values.FROMTOKBN = KindCode(QString(), QString(), values.ENDDT, values.ENDTM);

    const bool adding = m_handOver.TaskEditMode != QLatin1String("UPD");
    qint64 newId = 0;
    const bool saved = RunUserAction(m_app, this, [&] {
        DatabaseConnection& db = m_app.db();
        const QDateTime now = m_app.clock->now();
        values.CLASS = EnsureClassFromCombo(db, m_ui->CmbBunrui);
        if (adding) {
            newId = NextId(db, QStringLiteral("TRNSCHTSK"));
            values.ID = newId;
            db.ExecuteSql(EntryInsertSql(values, now));
        } else {
            values.ID = m_handOver.TaskEditId;
            // A row someone else changed since it was loaded keeps their version.
            db.ExecuteSql(TaskUpdateSql(values, now, m_loadedUpdTime));
        }
    });
    if (saved && adding)
        m_handOver.TaskEditId = static_cast<int>(newId);
    return saved;
}

QString FrmTask::postText() const
{
    const QString day = ParseTypedDate(m_ui->TxtEndDate->text(), todayYear()).toString(QStringLiteral("MM/dd"));
    return day + QStringLiteral(" ") + m_ui->CmbEndTime->currentText() + QStringLiteral("  ") +
           m_ui->CmbYusen->currentText() + CrLf + m_ui->TxtYouken->text() + CrLf + m_ui->TxtSyousai->toPlainText();
}

void FrmTask::ComOK_Click()
{
    // Enter on the default button leaves the focus where it was: tidy the typed dates and
    // times as leaving their boxes would have.
    TxtEndDate_LostFocus();
    CmbEndTime_LostFocus();
    TxtEnd_LostFocus();
    if (!validate())
        return;
    if (!save())
        return;
    m_handOver.TaskPostRequested = m_ui->ChkPost->isChecked();
    if (m_handOver.TaskPostRequested) {
        m_handOver.TaskPostText = postText();
        m_handOver.TaskPostColorIndex = RandomPostColor(m_app);
    }
    m_handOver.TaskSaved = true;
    accept();
}
