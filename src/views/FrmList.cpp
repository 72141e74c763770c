#include "views/FrmList.h"

#include "common/AppInfo.h"
#include "common/AppServices.h"
#include "common/Clock.h"
#include "common/Prompter.h"
#include "common/Units.h"
#include "common/UserAction.h"
#include "entries/EditorCommon.h"
#include "entries/FrmSchedule.h"
#include "entries/FrmTask.h"
#include "entries/LinkLabels.h"
#include "entries/TypedDateTime.h"
#include "store/SqlText.h"
#include "ui_FrmList.h"
#include "views/ListGridModel.h"
#include "views/ListQuery.h"

#include <QFocusEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyle>

#include <algorithm>

namespace {
constexpr int PickerLeftOffset = 50; // twips right of the date box
const QString BadDate = QStringLiteral("日付を正しく入力してください");
} // namespace

FrmList::FrmList(AppServices& app, ListHandOver& handOver, QWidget* parent)
    : QDialog(parent), m_app(app), m_handOver(handOver), m_ui(std::make_unique<Ui::FrmList>())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setWindowFlag(Qt::WindowMaximizeButtonHint, true);

    m_ui->CmbSelect->addItems({QStringLiteral("スケジュール＆タスク"), QStringLiteral("スケジュール"),
                               QStringLiteral("タスク"), QStringLiteral("完了済タスク")});

    m_model = new ListGridModel(this);
    QTableView* grid = m_ui->GrdGrid;
    grid->setModel(m_model);
    const double dpi = Units::LogicalDpi(this);
    int gridWidth = 0;
    const QFontMetrics cellFont = grid->fontMetrics();
    const QFontMetrics titleFont = grid->horizontalHeader()->fontMetrics();
    for (int column = 0; column < ListGridModel::ColumnCount; ++column) {
        // The widths were set for a narrow bitmap font; a wider one still shows whole dates
        // and times and whole titles.
        const int padding = 2 * grid->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, grid) + 6;
        const int width = std::max({Units::TwipsToPixels(ListGridModel::columnWidthTwips(column), dpi),
                                    cellFont.horizontalAdvance(ListGridModel::columnSample(column)) + padding,
                                    titleFont.horizontalAdvance(ListGridModel::columnTitle(column)) + padding});
        grid->setColumnWidth(column, width);
        gridWidth += width;
    }
    grid->horizontalHeader()->setStretchLastSection(true);
    grid->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    // One fixed height for every row: the view then never measures rows, which keeps a
    // grid of any length as quick to fill and scroll as a short one.
    grid->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    grid->verticalHeader()->setDefaultSectionSize(grid->fontMetrics().height() + 6);
    grid->installEventFilter(this);
    grid->viewport()->installEventFilter(this);
    connect(grid, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        if (index.isValid())
            MnuUpdate_Click();
    });

    m_ui->TxtFrom->installEventFilter(this);
    m_ui->TxtTo->installEventFilter(this);
    connect(m_ui->TxtFrom, &QLineEdit::returnPressed, this, &FrmList::RangeBox_LostFocus);
    connect(m_ui->TxtTo, &QLineEdit::returnPressed, this, &FrmList::RangeBox_LostFocus);

    m_links = new LinkLabelGroup(this);
    m_links->add(m_ui->LabStartDate, [this] { LabStartDate_Click(); });
    m_links->add(m_ui->LabEndDate, [this] { LabEndDate_Click(); });

    buildMenu();
    // Some room beyond the set widths for the class names, which have no width of their own.
    resize(gridWidth + grid->verticalScrollBar()->sizeHint().width() + 120, 460);
    Form_Load();
    connect(m_ui->CmbSelect, qOverload<int>(&QComboBox::currentIndexChanged), this, &FrmList::CmbSelect_Click);
}

FrmList::~FrmList() = default;

void FrmList::buildMenu()
{
    MnuAction = new QMenu(QStringLiteral("サブメニュー"), this);
    MnuAction->setObjectName(QStringLiteral("MnuAction"));
    const auto item = [this](const char* name, const QString& text, void (FrmList::*handler)()) {
        QAction* action = MnuAction->addAction(text);
        action->setObjectName(QString::fromLatin1(name));
        connect(action, &QAction::triggered, this, handler);
        return action;
    };
    MnuSchedule = item("MnuSchedule", QStringLiteral("新規 スケジュール"), &FrmList::MnuSchedule_Click);
    MnuTask = item("MnuTask", QStringLiteral("新規 タスク"), &FrmList::MnuTask_Click);
    MnuAction->addSeparator()->setObjectName(QStringLiteral("MnuLine1"));
    MnuUpdate = item("MnuUpdate", QStringLiteral("編集"), &FrmList::MnuUpdate_Click);
    MnuAction->addSeparator()->setObjectName(QStringLiteral("MnuLine2"));
    MnuDelete = item("MnuDelete", QStringLiteral("削除"), &FrmList::MnuDelete_Click);
}

void FrmList::Form_Load()
{
    m_ui->TxtFrom->setText(DateBoxText(m_handOver.ListFromDate));
    m_ui->TxtTo->setText(DateBoxText(m_handOver.ListToDate));
    m_ui->CmbSelect->setCurrentIndex(0);
    CmbSelect_Click();
}

void FrmList::CmbSelect_Click()
{
    const bool ranged = m_ui->CmbSelect->currentIndex() != static_cast<int>(ListChoice::CompletedTasks);
    for (QWidget* widget : {static_cast<QWidget*>(m_ui->TxtFrom), static_cast<QWidget*>(m_ui->TxtTo),
                            static_cast<QWidget*>(m_ui->LabStartDate), static_cast<QWidget*>(m_ui->LabEndDate)})
        widget->setEnabled(ranged);
    const int row = currentRow();
    FillGrid(m_model->idAt(row), qMax(row, 0));
}

bool FrmList::FillGrid(qint64 keepId, int keepRow)
{
    const auto choice = static_cast<ListChoice>(qBound(0, m_ui->CmbSelect->currentIndex(), 3));
    QDate from = ListRangeFirst();
    QDate to = ListRangeLast();
    if (choice != ListChoice::CompletedTasks) {
        const int year = m_app.clock ? m_app.clock->today().year() : QDate::currentDate().year();
        for (const auto& [box, bound] : {std::pair<QLineEdit*, QDate*>{m_ui->TxtFrom, &from}, {m_ui->TxtTo, &to}}) {
            const QString text = box->text().trimmed();
            if (text.isEmpty())
                continue;
            const QDate typed = ParseTypedDate(text, year);
            if (!typed.isValid() || typed < ListRangeFirst() || typed > ListRangeLast()) {
                // The grid keeps its rows and the box what was typed, to be put right.
                WarnUser(m_app, this, BadDate);
                return false;
            }
            *bound = typed;
        }
    }
    const bool filled = RunUserAction(
        m_app, this, [this, choice, &from, &to] { m_model->fill(m_app.db(), ListEntrySql(choice, from, to)); });
    if (!filled)
        return false;
    m_filledFrom = m_ui->TxtFrom->text();
    m_filledTo = m_ui->TxtTo->text();
    int row = keepId != 0 ? m_model->rowOfId(keepId) : -1;
    if (row < 0)
        row = qMin(keepRow, m_model->rowCount() - 1);
    if (row >= 0)
        m_ui->GrdGrid->setCurrentIndex(m_model->index(row, 0));
    return true;
}

void FrmList::RangeBox_LostFocus()
{
    const int year = m_app.clock ? m_app.clock->today().year() : QDate::currentDate().year();
    for (QLineEdit* box : {m_ui->TxtFrom, m_ui->TxtTo}) {
        // A date is put in its normal form; anything else stays as typed for the message.
        const QDate typed = ParseTypedDate(box->text().trimmed(), year);
        if (typed.isValid())
            box->setText(DateBoxText(typed));
        else if (box->text().trimmed().isEmpty())
            box->clear();
    }
    if (m_ui->TxtFrom->text() != m_filledFrom || m_ui->TxtTo->text() != m_filledTo)
        CmbSelect_Click();
}

void FrmList::LabStartDate_Click()
{
    PickDateInto(m_app, this, m_ui->TxtFrom, PickerLeftOffset);
    CmbSelect_Click();
}

void FrmList::LabEndDate_Click()
{
    PickDateInto(m_app, this, m_ui->TxtTo, PickerLeftOffset);
    CmbSelect_Click();
}

int FrmList::currentRow() const
{
    const QModelIndex current = m_ui->GrdGrid->currentIndex();
    return current.isValid() ? current.row() : -1;
}

bool FrmList::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_ui->TxtFrom || watched == m_ui->TxtTo) {
        if (event->type() == QEvent::FocusIn) {
            SelectAllText(static_cast<QLineEdit*>(watched));
        } else if (event->type() == QEvent::FocusOut) {
            // Only a move to another control is leaving the box; a menu or another window
            // coming up in front of the dialog is not.
            const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
            if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
                RangeBox_LostFocus();
        }
    } else if (watched == m_ui->GrdGrid && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Delete && key->modifiers() == Qt::NoModifier) {
            if (m_model->rowCount() > 0)
                MnuDelete_Click();
            return true;
        }
        if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) && currentRow() >= 0) {
            MnuUpdate_Click();
            return true;
        }
        if (key->key() == Qt::Key_Menu) {
            const QRect cell = m_ui->GrdGrid->visualRect(m_ui->GrdGrid->currentIndex());
            GrdGrid_RightRelease(cell.isValid() ? cell.center() : QPoint(4, 4));
            return true;
        }
    } else if (watched == m_ui->GrdGrid->viewport() && event->type() == QEvent::MouseButtonRelease) {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() == Qt::RightButton) {
            GrdGrid_RightRelease(mouse->position().toPoint());
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void FrmList::GrdGrid_RightRelease(const QPoint& pos)
{
    const QModelIndex index = m_ui->GrdGrid->indexAt(pos);
    if (index.isValid())
        m_ui->GrdGrid->setCurrentIndex(m_model->index(index.row(), 0));
    // Below the last row there is nothing to edit or delete, but new entries can still be
    // made from an empty list.
    MnuUpdate->setEnabled(index.isValid());
    MnuDelete->setEnabled(index.isValid());
    MnuAction->exec(m_ui->GrdGrid->viewport()->mapToGlobal(pos));
    MnuUpdate->setEnabled(true);
    MnuDelete->setEnabled(true);
}

void FrmList::MnuSchedule_Click()
{
    ScheduleHandOver handOver;
    handOver.ScheduleEditMode = QStringLiteral("ADD");
    handOver.ScheduleDate = m_app.clock ? m_app.clock->today() : QDate::currentDate();
    FrmSchedule editor(m_app, handOver, this);
    editor.exec();
    AfterEdit(handOver.ScheduleSaved, handOver.PostRequested, handOver.PostText, handOver.PostColorIndex,
              handOver.ScheduleEditId);
}

void FrmList::MnuTask_Click()
{
    TaskHandOver handOver;
    handOver.TaskEditMode = QStringLiteral("ADD");
    handOver.TaskDate = m_app.clock ? m_app.clock->today() : QDate::currentDate();
    FrmTask editor(m_app, handOver, this);
    editor.exec();
    AfterEdit(handOver.TaskSaved, handOver.TaskPostRequested, handOver.TaskPostText, handOver.TaskPostColorIndex,
              handOver.TaskEditId);
}

void FrmList::MnuUpdate_Click()
{
    const int row = currentRow();
    if (row < 0)
        return;
    const qint64 id = m_model->idAt(row);
    if (m_model->isTask(row)) {
        TaskHandOver handOver;
        handOver.TaskEditMode = QStringLiteral("UPD");
        handOver.TaskEditId = static_cast<int>(id);
        FrmTask editor(m_app, handOver, this);
        editor.exec();
        AfterEdit(handOver.TaskSaved, handOver.TaskPostRequested, handOver.TaskPostText, handOver.TaskPostColorIndex,
                  id);
    } else {
        ScheduleHandOver handOver;
        handOver.ScheduleEditMode = QStringLiteral("UPD");
        handOver.ScheduleEditId = static_cast<int>(id);
        FrmSchedule editor(m_app, handOver, this);
        editor.exec();
        AfterEdit(handOver.ScheduleSaved, handOver.PostRequested, handOver.PostText, handOver.PostColorIndex, id);
    }
}

void FrmList::MnuDelete_Click()
{
    const int row = currentRow();
    if (row < 0 || !m_app.prompter)
        return;
    const qint64 id = m_model->idAt(row);
    const QString kind = m_model->isTask(row) ? QStringLiteral("タスク : ") : QStringLiteral("スケジュール : ");
    const QString question =
        kind + m_model->cellText(row, ListGridModel::Subject) + QStringLiteral(" を削除してよろしいですか？");
    const Prompt prompt{question, PromptIcon::Question, PromptButtons::OkCancel, PromptAnswer::Cancel,
                        AppInfo::productTitle()};
    if (m_app.prompter->ask(this, prompt) != PromptAnswer::Ok)
        return;
    const bool deleted = RunUserAction(m_app, this, [this, id] {
        DatabaseConnection& db = m_app.db();
        db.BeginTrans();
        db.ExecuteSql(QStringLiteral("DELETE * FROM TRNSCHTSK WHERE ID = ") + QString::number(id) +
                      QStringLiteral(" "));
        db.CommitTrans();
    });
    if (!deleted)
        return;
    FillGrid(0, row);
    if (m_handOver.EntriesChanged)
        m_handOver.EntriesChanged();
}

void FrmList::AfterEdit(bool saved, bool postRequested, const QString& postText, int postColorIndex, qint64 id)
{
    if (!saved)
        return;
    if (postRequested && m_handOver.NewStickyNote)
        m_handOver.NewStickyNote(postText, postColorIndex);
    FillGrid(id, qMax(currentRow(), 0));
    if (m_handOver.EntriesChanged)
        m_handOver.EntriesChanged();
}
