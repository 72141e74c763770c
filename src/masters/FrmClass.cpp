#include "masters/FrmClass.h"

#include "common/AppServices.h"
#include "common/Prompter.h"
#include "common/UserAction.h"
#include "masters/ClassRows.h"
#include "masters/FrmEdit.h"
#include "store/SqlText.h"
#include "ui_FrmClass.h"

#include <QListWidget>
#include <QPushButton>

namespace {
const QString KindClass = QStringLiteral("Class");

qint64 lineId(const QListWidgetItem* item)
{
    return item->data(Qt::UserRole).toLongLong();
}
} // namespace

FrmClass::FrmClass(AppServices& app, QWidget* parent)
    : QDialog(parent), m_app(app), m_ui(std::make_unique<Ui::FrmClass>()), m_transaction(app.db())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_ui->LstClass->setSelectionMode(QAbstractItemView::SingleSelection);
    connect(m_ui->ComInsert, &QPushButton::clicked, this, &FrmClass::ComInsert_Click);
    connect(m_ui->ComUpdate, &QPushButton::clicked, this, &FrmClass::ComUpdate_Click);
    connect(m_ui->ComDelete, &QPushButton::clicked, this, &FrmClass::ComDelete_Click);
    connect(m_ui->ComUp, &QPushButton::clicked, this, &FrmClass::ComUp_Click);
    connect(m_ui->ComDn, &QPushButton::clicked, this, &FrmClass::ComDn_Click);
    connect(m_ui->ComOk, &QPushButton::clicked, this, &FrmClass::ComOK_Click);
    connect(m_ui->ComCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_ui->LstClass, &QListWidget::itemDoubleClicked, this, &FrmClass::ComUpdate_Click);
    Form_Load();
}

FrmClass::~FrmClass() = default;

void FrmClass::Form_Load()
{
    const bool loaded = RunUserAction(m_app, parentWidget(), [this] {
        m_transaction.begin();
        const Rows rows = m_app.db().ReadRows(QStringLiteral("SELECT * FROM MSTCLASS ORDER BY SORTKEY"));
        for (const Row& row : rows) {
            auto* item = new QListWidgetItem(row.text(QStringLiteral("CLASS")), m_ui->LstClass);
            item->setData(Qt::UserRole, row.number(QStringLiteral("ID")));
        }
    });
    if (!loaded) {
        // Without the classes and the transaction nothing here could be saved safely:
        // leave only the way out.
        m_ui->LstClass->clear();
        for (QPushButton* button :
             {m_ui->ComInsert, m_ui->ComUpdate, m_ui->ComDelete, m_ui->ComUp, m_ui->ComDn, m_ui->ComOk})
            button->setEnabled(false);
        m_ui->ComCancel->setDefault(true);
    }
}

int FrmClass::selectedRow() const
{
    const QList<QListWidgetItem*> selected = m_ui->LstClass->selectedItems();
    return selected.isEmpty() ? -1 : m_ui->LstClass->row(selected.front());
}

void FrmClass::ComInsert_Click()
{
    EditHandOver handOver;
    handOver.EditKind = KindClass;
    handOver.EditTitle = QStringLiteral("分類 - 新規");
    if (!RunEditDialog(m_app, handOver, this))
        return;
    const QString name = handOver.EditText;
    RunUserAction(m_app, this, [this, &name] {
        DatabaseConnection& db = m_app.db();
        const qint64 id = InsertNewClass(db, name);
        auto* item = new QListWidgetItem(name, m_ui->LstClass);
        item->setData(Qt::UserRole, id);
        m_ui->LstClass->setCurrentItem(item);
    });
}

void FrmClass::ComUpdate_Click()
{
    const int row = selectedRow();
    if (row < 0)
        return;
    QListWidgetItem* item = m_ui->LstClass->item(row);
    EditHandOver handOver;
    handOver.EditKind = KindClass;
    handOver.EditTitle = QStringLiteral("分類 - 編集");
    handOver.EditText = item->text();
    // The new name lives in the list until OK writes every line.
    if (RunEditDialog(m_app, handOver, this))
        item->setText(handOver.EditText);
}

void FrmClass::ComDelete_Click()
{
    const int row = selectedRow();
    if (row < 0)
        return;
    if (!m_app.prompter || !m_app.prompter->confirm(this, QStringLiteral("削除してよろしいですか？")))
        return;
    RunUserAction(m_app, this, [this, row] {
        DatabaseConnection& db = m_app.db();
        const QString id = QString::number(lineId(m_ui->LstClass->item(row)));
        const Rows rows = db.ReadRows(QStringLiteral("SELECT COUNT(*) AS RECCNT FROM TRNSCHTSK WHERE CLASS = ") + id +
                                      QStringLiteral(" "));
        if (!rows.empty() && rows.front().number(QStringLiteral("RECCNT")) > 0) {
            m_app.prompter->inform(this, QStringLiteral("使用されているため削除できません"), PromptIcon::Warning);
            return;
        }
        db.ExecuteSql(QStringLiteral("DELETE * FROM MSTCLASS WHERE ID = ") + id);
        delete m_ui->LstClass->takeItem(row);
    });
}

void FrmClass::ComUp_Click()
{
    MoveLine(QStringLiteral("UP"));
}

void FrmClass::ComDn_Click()
{
    MoveLine(QStringLiteral("DOWN"));
}

void FrmClass::MoveLine(const QString& direction)
{
    const int row = selectedRow();
    if (row < 0)
        return;
    int neighbour = -1;
    if (direction == QLatin1String("UP"))
        neighbour = row - 1;
    else if (direction == QLatin1String("DOWN"))
        neighbour = row + 1;
    if (neighbour < 0 || neighbour >= m_ui->LstClass->count())
        return;
    QListWidgetItem* moved = m_ui->LstClass->item(row);
    QListWidgetItem* other = m_ui->LstClass->item(neighbour);
    const QString text = moved->text();
    const QVariant id = moved->data(Qt::UserRole);
    moved->setText(other->text());
    moved->setData(Qt::UserRole, other->data(Qt::UserRole));
    other->setText(text);
    other->setData(Qt::UserRole, id);
    m_ui->LstClass->setCurrentRow(neighbour);
}

void FrmClass::ComOK_Click()
{
    const bool saved = RunUserAction(m_app, this, [this] {
        DatabaseConnection& db = m_app.db();
        // Every line is written, changed or not: the list is the order and the names.
        for (int i = 0; i < m_ui->LstClass->count(); ++i) {
            const QListWidgetItem* item = m_ui->LstClass->item(i);
            db.ExecuteSql(QStringLiteral("UPDATE MSTCLASS SET CLASS = ") + QuoteText(item->text()) +
                          QStringLiteral(" , SORTKEY = ") + QString::number(i + 1) + QStringLiteral(" WHERE ID = ") +
                          QString::number(lineId(item)) + QStringLiteral(" "));
        }
        m_transaction.commit();
    });
    if (saved)
        accept();
}

void FrmClass::done(int result)
{
    // Only OK commits, before it gets here; whatever is still open was not confirmed.
    m_transaction.rollback();
    QDialog::done(result);
}
