#include "notes/FrmPost.h"

#include "common/AppServices.h"
#include "common/Units.h"
#include "notes/StickyNoteColors.h"
#include "notes/StickyNotes.h"

#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

namespace {

// About 55 by 45 mm on a 96 dpi desktop: room for a few lines of a schedule's text.
constexpr int NoteWidth = 210;
constexpr int NoteHeight = 170;
constexpr int StripHeight = 12;

} // namespace

NoteShape::NoteShape(QWidget* parent) : QWidget(parent) {}

void NoteShape::setColor(const QColor& color)
{
    m_color = color;
    update();
}

void NoteShape::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), m_color);
}

FrmPost::FrmPost(StickyNotes& notes, int slot, QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint), m_notes(notes), m_slot(slot)
{
    setObjectName(QStringLiteral("FrmPost"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("付箋"));
    buildControls();
    buildMenu();
    Form_Load();
}

void FrmPost::buildControls()
{
    resize(NoteWidth, NoteHeight);
    setAutoFillBackground(true);

    ShpColor = new NoteShape(this);
    ShpColor->setObjectName(QStringLiteral("ShpColor"));
    ShpColor->setFixedHeight(StripHeight);

    TxtPost = new QPlainTextEdit(this);
    TxtPost->setObjectName(QStringLiteral("TxtPost"));
    TxtPost->setFrameShape(QFrame::NoFrame);
    TxtPost->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    TxtPost->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    TxtPost->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    // The paper shows through the text box; the text is always dark on it.
    TxtPost->viewport()->setAutoFillBackground(false);
    TxtPost->setStyleSheet(
        QStringLiteral("QPlainTextEdit { background: transparent; color: #1a1a1a; selection-background-color: "
                       "rgba(0, 0, 0, 60); selection-color: #000000; }"));
    QFont font(QStringLiteral("ＭＳ Ｐゴシック"));
    font.setPointSize(10);
    TxtPost->setFont(font);
    TxtPost->setContextMenuPolicy(Qt::NoContextMenu);
    TxtPost->viewport()->installEventFilter(this);
    connect(TxtPost, &QPlainTextEdit::textChanged, this, [this] {
        ownSlot().text = TxtPost->toPlainText();
        m_notes.noteChanged(m_slot);
    });

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->setSpacing(2);
    layout->addWidget(ShpColor);
    auto* body = new QVBoxLayout;
    body->setContentsMargins(5, 0, 3, 5);
    body->addWidget(TxtPost);
    layout->addLayout(body, 1);
}

void FrmPost::buildMenu()
{
    MnuPost = new QMenu(QStringLiteral("付箋メニュー"), this);
    MnuPost->setObjectName(QStringLiteral("MnuPost"));
    MnuColor = MnuPost->addMenu(QStringLiteral("色変更"));
    MnuColor->setObjectName(QStringLiteral("MnuColor"));
    auto* group = new QActionGroup(this);
    size_t at = 0;
    for (const StickyNoteColor& entry : StickyNoteColorsInMenuOrder()) {
        QAction* action = MnuColor->addAction(entry.caption);
        action->setObjectName(QString::fromLatin1(entry.menuName));
        action->setCheckable(true);
        action->setData(entry.index);
        group->addAction(action);
        QPixmap swatch(12, 12);
        swatch.fill(entry.color);
        action->setIcon(QIcon(swatch));
        const int index = entry.index;
        connect(action, &QAction::triggered, this, [this, index] { applyColor(index); });
        m_colorActions[at++] = action;
    }
    MnuLine = MnuPost->addSeparator();
    MnuLine->setObjectName(QStringLiteral("MnuLine"));
    MnuClose = MnuPost->addAction(QStringLiteral("はがす"));
    MnuClose->setObjectName(QStringLiteral("MnuClose"));
    connect(MnuClose, &QAction::triggered, this, &FrmPost::MnuClose_Click);
}

StickyNoteSlot& FrmPost::ownSlot()
{
    return m_notes.app().state.StickyNotes[static_cast<size_t>(m_slot)];
}

void FrmPost::Form_Load()
{
    const StickyNoteSlot& handOver = m_notes.app().state.StickyNotes[0];
    TxtPost->setPlainText(handOver.text);
    if (handOver.left != 0 || handOver.top != 0) {
        const double dpi = Units::LogicalDpi(this);
        QPoint place(Units::TwipsToPixels(handOver.left, dpi), Units::TwipsToPixels(handOver.top, dpi));
        // A place no screen shows any more (a monitor unplugged since) would hide the note
        // for good: bring it onto the main screen instead.
        if (!QGuiApplication::screenAt(place + QPoint(NoteWidth / 2, StripHeight))) {
            if (const QScreen* screen = QGuiApplication::primaryScreen()) {
                const QRect area = screen->availableGeometry();
                place.setX(qBound(area.left(), place.x(), qMax(area.left(), area.right() - NoteWidth)));
                place.setY(qBound(area.top(), place.y(), qMax(area.top(), area.bottom() - NoteHeight)));
            }
        }
        move(place);
    }
    applyColor(handOver.colorIndex);
    storeInSlot();
    TxtPost->setFocus();
}

void FrmPost::applyColor(int index)
{
    m_colorIndex = index;
    const QColor shape = StickyNoteShapeColor(index);
    ShpColor->setColor(shape);
    QPalette paper = palette();
    paper.setColor(QPalette::Window, StickyNotePaperColor(index));
    setPalette(paper);
    for (QAction* action : m_colorActions) {
        // Black stands for every index outside 1 to 6.
        const int entry = action->data().toInt();
        action->setChecked(entry == index || (entry == 0 && (index < 1 || index > 6)));
    }
    ownSlot().colorIndex = index;
    m_notes.noteChanged(m_slot);
    update();
}

void FrmPost::MnuClose_Click()
{
    close();
}

void FrmPost::storeInSlot()
{
    StickyNoteSlot& own = ownSlot();
    own.text = TxtPost->toPlainText();
    const double dpi = Units::LogicalDpi(this);
    own.left = Units::PixelsToTwips(pos().x(), dpi);
    own.top = Units::PixelsToTwips(pos().y(), dpi);
    // A place of 0, 0 reads back as "no place given", and the desktop would put the note
    // elsewhere at the next start: one twip, less than a pixel, keeps it in the corner.
    if (own.left == 0 && own.top == 0)
        own.left = 1;
}

void FrmPost::closeEvent(QCloseEvent* event)
{
    // Only the note's own "はがす" and the program's exit take a note off the desktop. A
    // close from the window system (a stray Alt+F4, a desktop tearing its windows down
    // at logout) would otherwise throw the note's text away.
    if (event->spontaneous()) {
        event->ignore();
        return;
    }
    storeInSlot();
    ownSlot().inUse = false;
    m_notes.noteChanged(m_slot);
    event->accept();
}

void FrmPost::moveEvent(QMoveEvent* event)
{
    QWidget::moveEvent(event);
    storeInSlot();
    m_notes.noteChanged(m_slot);
}

void FrmPost::paintEvent(QPaintEvent*)
{
    // A hairline edge a shade darker than the paper, so a note stands off a white desktop.
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Window).darker(140));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void FrmPost::contextMenuEvent(QContextMenuEvent* event)
{
    MnuPost->popup(event->globalPos());
}

void FrmPost::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        dragPress(event->globalPosition().toPoint());
    QWidget::mousePressEvent(event);
}

void FrmPost::mouseMoveEvent(QMouseEvent* event)
{
    if (!dragMove(event->globalPosition().toPoint(), event->buttons()))
        QWidget::mouseMoveEvent(event);
}

void FrmPost::mouseReleaseEvent(QMouseEvent* event)
{
    dragRelease();
    QWidget::mouseReleaseEvent(event);
}

bool FrmPost::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != TxtPost->viewport())
        return QWidget::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::MouseButtonPress: {
        auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() == Qt::RightButton) {
            MnuPost->popup(mouse->globalPosition().toPoint());
            return true;
        }
        // A click still places the caret; only a drag moves the note.
        if (mouse->button() == Qt::LeftButton)
            dragPress(mouse->globalPosition().toPoint());
        return false;
    }
    case QEvent::MouseMove: {
        auto* mouse = static_cast<QMouseEvent*>(event);
        // Every left-button drag belongs to the note, so the text never gets a selection.
        return dragMove(mouse->globalPosition().toPoint(), mouse->buttons()) || (mouse->buttons() & Qt::LeftButton);
    }
    case QEvent::MouseButtonRelease:
        dragRelease();
        return false;
    default:
        return false;
    }
}

void FrmPost::dragPress(const QPoint& globalPos)
{
    m_pressed = true;
    m_manualMove = false;
    m_pressGlobal = globalPos;
    m_pressWindowPos = pos();
}

bool FrmPost::dragMove(const QPoint& globalPos, Qt::MouseButtons buttons)
{
    if (!(buttons & Qt::LeftButton) || !m_pressed)
        return false;
    if (m_manualMove) {
        move(m_pressWindowPos + globalPos - m_pressGlobal);
        return true;
    }
    if ((globalPos - m_pressGlobal).manhattanLength() < QApplication::startDragDistance())
        return true;
    // The window manager moves the note as if by its title bar; where it cannot, the note
    // follows the pointer itself.
    if (windowHandle() && windowHandle()->startSystemMove()) {
        m_pressed = false;
        return true;
    }
    m_manualMove = true;
    move(m_pressWindowPos + globalPos - m_pressGlobal);
    return true;
}

void FrmPost::dragRelease()
{
    m_pressed = false;
    m_manualMove = false;
}
