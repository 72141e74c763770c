#include "entries/EditorCommon.h"

#include "common/AppInfo.h"
#include "common/AppServices.h"
#include "common/Clock.h"
#include "common/DatePicker.h"
#include "common/Prompter.h"
#include "common/RandomSource.h"
#include "common/Units.h"
#include "entries/TypedDateTime.h"

#include <QComboBox>
#include <QEvent>
#include <QLineEdit>

#include <cmath>

namespace {

class FocusWatcher final : public QObject
{
public:
    FocusWatcher(QWidget* widget, std::function<void()> in, std::function<void()> out)
        : QObject(widget), m_in(std::move(in)), m_out(std::move(out))
    {
        widget->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::FocusIn && m_in)
            m_in();
        else if (event->type() == QEvent::FocusOut && m_out)
            m_out();
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void()> m_in;
    std::function<void()> m_out;
};

} // namespace

void FillTimeCombos(DatabaseConnection& db, std::initializer_list<QComboBox*> combos)
{
    const Rows rows = db.ReadRows(QStringLiteral("SELECT * ") + QStringLiteral("FROM TRNGENERAL ") +
                                  QStringLiteral("WHERE CODE = 401 ") + QStringLiteral("ORDER BY DATAN1"));
    for (QComboBox* combo : combos) {
        combo->clear();
        for (const Row& row : rows)
            combo->addItem(row.text(QStringLiteral("DATAS1")), row.number(QStringLiteral("DATAN1")));
        combo->setCurrentIndex(-1);
    }
}

void NormaliseTimeBox(QComboBox* combo)
{
    const QString text = TimeBoxText(ParseTypedTime(combo->currentText()));
    if (text != combo->currentText())
        combo->setEditText(text);
}

void NormaliseDateBox(QLineEdit* box, int defaultYear)
{
    const QString text = DateBoxText(ParseTypedDate(box->text(), defaultYear));
    if (text != box->text())
        box->setText(text);
}

void WarnUser(AppServices& app, QWidget* parent, const QString& text)
{
    if (app.prompter)
        app.prompter->ask(
            parent, Prompt{text, PromptIcon::Warning, PromptButtons::Ok, PromptAnswer::Ok, AppInfo::productTitle()});
}

void PickDateInto(AppServices& app, QWidget* dialog, QLineEdit* box, int leftOffsetTwips)
{
    if (!app.datePicker)
        return;
    const QDate today = app.clock ? app.clock->today() : QDate();
    const QDate current = ParseTypedDate(box->text(), today.year());
    const double dpi = Units::LogicalDpi(dialog);
    // The dialog's outer position plus the box's place inside it, in twips on the screen.
    const QPoint inDialog = box->mapTo(dialog, QPoint(0, 0));
    DatePickHandOver handOver;
    handOver.PickedDate = current.isValid() ? current : today;
    handOver.DatePicked = false;
    handOver.PickerTop = Units::PixelsToTwips(dialog->y(), dpi) + Units::PixelsToTwips(inDialog.y(), dpi) + 700;
    handOver.PickerLeft =
        Units::PixelsToTwips(dialog->x(), dpi) + Units::PixelsToTwips(inDialog.x(), dpi) + leftOffsetTwips;
    app.datePicker->pickDate(dialog, handOver);
    if (handOver.DatePicked && handOver.PickedDate.isValid())
        box->setText(DateBoxText(handOver.PickedDate));
}

int RandomPostColor(AppServices& app)
{
    const double r = app.random ? app.random->next() : 0.0;
    const int index = static_cast<int>(std::floor(r * 7));
    return qBound(0, index, 6);
}

void OnFocusChange(QWidget* widget, std::function<void()> in, std::function<void()> out)
{
    new FocusWatcher(widget, std::move(in), std::move(out));
}

ComboSnapshot::ComboSnapshot(QComboBox* combo)
    : m_combo(combo), m_count(combo->count()), m_index(combo->currentIndex()), m_text(combo->currentText())
{}

void ComboSnapshot::restore() const
{
    while (m_combo->count() > m_count)
        m_combo->removeItem(m_combo->count() - 1);
    m_combo->setCurrentIndex(m_index);
    m_combo->setEditText(m_text);
}
