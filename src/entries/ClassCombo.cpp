#include "entries/ClassCombo.h"

#include "masters/ClassRows.h"
#include "store/DatabaseConnection.h"
#include "store/SqlText.h"

#include <QComboBox>
#include <QLineEdit>

namespace {

// An editable combo keeps its current index while the user types something else over it:
// only an item whose text is what is shown counts as selected.
bool ShowsSelectedItem(const QComboBox* combo)
{
    const int index = combo->currentIndex();
    return index >= 0 && combo->itemText(index) == combo->currentText();
}

} // namespace

qint64 EnsureClassFromCombo(DatabaseConnection& db, QComboBox* combo)
{
    if (!combo)
        return 0;
    const QString name = combo->currentText().trimmed();
    if (name.isEmpty())
        return 0;
    if (!ShowsSelectedItem(combo)) {
        int found = -1;
        for (int i = 0; i < combo->count(); ++i) {
            if (combo->itemText(i).trimmed() == name) {
                found = i;
                break;
            }
        }
        if (found < 0) {
            const qint64 id = InsertNewClass(db, name);
            combo->addItem(name, id);
            found = combo->count() - 1;
        }
        combo->setCurrentIndex(found);
    }
    return combo->itemData(combo->currentIndex()).toLongLong();
}

void FillClassCombo(DatabaseConnection& db, QComboBox* combo, const QString& sql)
{
    const Rows rows = db.ReadRows(sql);
    combo->clear();
    for (const Row& row : rows)
        combo->addItem(row.text(QStringLiteral("CLASS")), row.number(QStringLiteral("ID")));
    combo->setCurrentIndex(-1);
}
