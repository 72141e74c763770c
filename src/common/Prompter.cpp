#include "common/Prompter.h"

#include "common/AppInfo.h"

#include <QMessageBox>

PromptAnswer MessageBoxPrompter::ask(QWidget* parent, const Prompt& prompt)
{
    QMessageBox box(parent);
    box.setWindowTitle(prompt.title.isEmpty() ? AppInfo::productTitle() : prompt.title);
    box.setText(prompt.text);
    switch (prompt.icon) {
    case PromptIcon::None:
        box.setIcon(QMessageBox::NoIcon);
        break;
    case PromptIcon::Information:
        box.setIcon(QMessageBox::Information);
        break;
    case PromptIcon::Warning:
        box.setIcon(QMessageBox::Warning);
        break;
    case PromptIcon::Critical:
        box.setIcon(QMessageBox::Critical);
        break;
    case PromptIcon::Question:
        box.setIcon(QMessageBox::Question);
        break;
    }
    if (prompt.buttons == PromptButtons::OkCancel) {
        box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
        box.setDefaultButton(prompt.defaultAnswer == PromptAnswer::Cancel ? QMessageBox::Cancel : QMessageBox::Ok);
        box.setEscapeButton(QMessageBox::Cancel);
    } else {
        box.setStandardButtons(QMessageBox::Ok);
    }
    return box.exec() == QMessageBox::Ok ? PromptAnswer::Ok : PromptAnswer::Cancel;
}
