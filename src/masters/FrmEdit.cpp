#include "masters/FrmEdit.h"

#include "common/AppServices.h"
#include "common/Prompter.h"
#include "store/SqlText.h"
#include "ui_FrmEdit.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPushButton>

namespace {
const QString KindPriority = QStringLiteral("Priority");
}

FrmEdit::FrmEdit(AppServices& app, EditHandOver& handOver, QWidget* parent)
    : QDialog(parent), m_app(app), m_handOver(handOver), m_ui(std::make_unique<Ui::FrmEdit>())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_ui->TxtEdit->installEventFilter(this);
    connect(m_ui->ComOK, &QPushButton::clicked, this, &FrmEdit::ComOK_Click);
    connect(m_ui->ComCancel, &QPushButton::clicked, this, &QDialog::reject);
    Form_Load();
    // Room for a name of a good length without the user having to widen the window.
    resize(qMax(sizeHint().width(), m_ui->TxtEdit->fontMetrics().averageCharWidth() * 44), sizeHint().height());
}

FrmEdit::~FrmEdit() = default;

void FrmEdit::Form_Load()
{
    setWindowTitle(m_handOver.EditTitle);
    m_ui->ChkCheck->setVisible(false);
    if (m_handOver.EditKind == KindPriority)
        m_ui->ChkCheck->setChecked(m_handOver.EditCheck);
    m_ui->TxtEdit->setText(m_handOver.EditText);
    m_ui->TxtEdit->setFocus();
    SelectAllText(m_ui->TxtEdit);
}

void FrmEdit::ComOK_Click()
{
    // A name of blanks only would show as an empty line in the lists: refuse it like
    // an empty one, but keep what was typed so it can be corrected.
    if (m_ui->TxtEdit->text().trimmed().isEmpty()) {
        if (m_app.prompter)
            m_app.prompter->inform(this, QStringLiteral("入力されていません"), PromptIcon::None);
        m_ui->TxtEdit->setFocus();
        return;
    }
    if (m_handOver.EditKind == KindPriority)
        m_handOver.EditCheck = m_ui->ChkCheck->isChecked();
    m_handOver.EditText = m_ui->TxtEdit->text();
    m_handOver.EditOK = true;
    accept();
}

bool FrmEdit::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_ui->TxtEdit && event->type() == QEvent::FocusIn)
        SelectAllText(m_ui->TxtEdit);
    return QDialog::eventFilter(watched, event);
}

bool RunEditDialog(AppServices& app, EditHandOver& handOver, QWidget* parent)
{
    handOver.EditOK = false;
    FrmEdit dialog(app, handOver, parent);
    dialog.exec();
    return handOver.EditOK;
}
