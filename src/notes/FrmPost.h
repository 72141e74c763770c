#pragma once

#include <QPoint>
#include <QWidget>

#include <array>

class QAction;
class QMenu;
class QPlainTextEdit;
class StickyNotes;
struct StickyNoteSlot;

// The coloured figure on a note: the strip along its top edge, in the note's own colour.
class NoteShape final : public QWidget
{
    Q_OBJECT
public:
    explicit NoteShape(QWidget* parent = nullptr);
    QColor color() const { return m_color; }
    void setColor(const QColor& color);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor m_color;
};

// One sticky note: a small frameless window with a text the user types straight into,
// tinted in one of seven colours and dragged by any spot of its body. It keeps its slot
// of the slot table current as it changes, and reports each change for saving.
class FrmPost final : public QWidget
{
    Q_OBJECT
public:
    // Opens on `slot` with the content the caller left in the hand-over slot 0.
    FrmPost(StickyNotes& notes, int slot, QWidget* parent = nullptr);

    int slot() const { return m_slot; }
    int colorIndex() const { return m_colorIndex; }

    // A colour entry of the menu: the shape and the paper take the colour and the slot
    // keeps its index (anything but 1 to 6 is black).
    void applyColor(int index);
    // "はがす": the note is peeled off; its slot is free again.
    void MnuClose_Click();

    QMenu* menu() const { return MnuPost; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildControls();
    void buildMenu();
    void Form_Load();
    StickyNoteSlot& ownSlot();
    void storeInSlot();
    // The dragging: a left-button drag on any spot of the note moves the window.
    void dragPress(const QPoint& globalPos);
    bool dragMove(const QPoint& globalPos, Qt::MouseButtons buttons);
    void dragRelease();

    StickyNotes& m_notes;
    const int m_slot;
    int m_colorIndex = 0;

    NoteShape* ShpColor = nullptr;
    QPlainTextEdit* TxtPost = nullptr;
    QMenu* MnuPost = nullptr;
    QMenu* MnuColor = nullptr;
    QAction* MnuLine = nullptr;
    QAction* MnuClose = nullptr;
    std::array<QAction*, 7> m_colorActions{};

    bool m_pressed = false;
    bool m_manualMove = false;
    QPoint m_pressGlobal;
    QPoint m_pressWindowPos;
};
