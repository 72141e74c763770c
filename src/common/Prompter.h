#pragma once

#include <QString>

class QWidget;

enum class PromptIcon
{
    None,
    Information,
    Warning,
    Critical,
    Question,
};

enum class PromptButtons
{
    Ok,
    OkCancel,
};

enum class PromptAnswer
{
    Ok,
    Cancel,
};

struct Prompt
{
    QString text;
    PromptIcon icon = PromptIcon::None;
    PromptButtons buttons = PromptButtons::Ok;
    // Confirmations default to Cancel so a stray Enter never destroys anything.
    PromptAnswer defaultAnswer = PromptAnswer::Ok;
    QString title;
};

// Every message box and OK/Cancel question of the program goes through here.
class Prompter
{
public:
    virtual ~Prompter() = default;
    virtual PromptAnswer ask(QWidget* parent, const Prompt& prompt) = 0;

    void inform(QWidget* parent, const QString& text, PromptIcon icon = PromptIcon::Information)
    {
        ask(parent, Prompt{text, icon, PromptButtons::Ok, PromptAnswer::Ok, {}});
    }
    bool confirm(QWidget* parent, const QString& text, PromptIcon icon = PromptIcon::Question)
    {
        return ask(parent, Prompt{text, icon, PromptButtons::OkCancel, PromptAnswer::Cancel, {}}) == PromptAnswer::Ok;
    }
};

class MessageBoxPrompter final : public Prompter
{
public:
    PromptAnswer ask(QWidget* parent, const Prompt& prompt) override;
};
