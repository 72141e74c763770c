#include "masters/FrmPriority.h"

#include "common/AppServices.h"
#include "common/UserAction.h"
#include "masters/FrmEdit.h"
#include "store/SqlText.h"
#include "ui_FrmPriority.h"

#include <QListWidget>
#include <QPushButton>

FrmPriority::FrmPriority(AppServices& app, QWidget* parent)
    : QDialog(parent), m_app(app), m_ui(std::make_unique<Ui::FrmPriority>()), m_transaction(app.db())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_ui->LstPriority->setSelectionMode(QAbstractItemView::SingleSelection);
    connect(m_ui->ComUpdate, &QPushButton::clicked, this, &FrmPriority::ComUpdate_Click);
    connect(m_ui->ComOK, &QPushButton::clicked, this, &FrmPriority::ComOK_Click);
    connect(m_ui->ComCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_ui->LstPriority, &QListWidget::itemDoubleClicked, this, &FrmPriority::ComUpdate_Click);
    Form_Load();
}

FrmPriority::~FrmPriority() = default;

void FrmPriority::Form_Load()
{
    const bool loaded = RunUserAction(m_app, parentWidget(), [this] {
        m_transaction.begin();
        const Rows rows =
            m_app.db().ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 100 ORDER BY DATAN1"));
        m_ui->LstPriority->clear();
        for (const Row& row : rows) {
            auto* item = new QListWidgetItem(row.text(QStringLiteral("DATAS1")), m_ui->LstPriority);
            item->setData(Qt::UserRole, row.number(QStringLiteral("DATAN1")));
        }
    });
    if (!loaded) {
        // Nothing was read, so nothing may be written back: leave only the way out.
        m_ui->LstPriority->clear();
        m_ui->ComUpdate->setEnabled(false);
        m_ui->ComOK->setEnabled(false);
        m_ui->ComCancel->setDefault(true);
    }
}

void FrmPriority::ComUpdate_Click()
{
    const QList<QListWidgetItem*> selected = m_ui->LstPriority->selectedItems();
    if (selected.isEmpty())
        return;
    QListWidgetItem* item = selected.front();
    EditHandOver handOver;
    handOver.EditKind = QStringLiteral("Priority");
    handOver.EditTitle = QStringLiteral("優先度 - 編集");
    handOver.EditText = item->text();
    // The new name lives in the list until OK writes every line.
    if (RunEditDialog(m_app, handOver, this))
        item->setText(handOver.EditText);
}

void FrmPriority::ComOK_Click()
{
    const bool saved = RunUserAction(m_app, this, [this] {
        DatabaseConnection& db = m_app.db();
        for (int i = 0; i < m_ui->LstPriority->count(); ++i) {
            const QListWidgetItem* item = m_ui->LstPriority->item(i);
            db.ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAS1 = ") + QuoteText(item->text()) +
                          QStringLiteral(" WHERE CODE = 100 AND DATAN1 = ") +
                          QString::number(item->data(Qt::UserRole).toLongLong()) + QStringLiteral(" "));
        }
        m_transaction.commit();
        m_priorityChanged = true;
    });
    if (saved)
        accept();
}

void FrmPriority::done(int result)
{
    // Only OK commits, before it gets here; whatever is still open was not confirmed.
    m_transaction.rollback();
    QDialog::done(result);
}
