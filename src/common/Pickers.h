#pragma once

#include <QColor>
#include <QString>

#include <optional>

class QWidget;

// The standard pickers the settings dialog opens. Seams, so tests can answer them.

// A font as the design rows keep it: the family without any style words, its size in
// points (fractions allowed) and the two style flags.
struct FontChoice
{
    QString name;
    double size = 9;
    bool bold = false;
    bool italic = false;
};

struct FileRequest
{
    enum class Mode
    {
        Open, // the chosen file must exist
        Save, // an existing file is replaced only after the user agreed
    };
    Mode mode = Mode::Open;
    QString title;
    // The file (or folder) the picker starts on; may be empty or a bare pattern.
    QString fileName;
    // Added to a typed name that has none, without the dot ("wav").
    QString defaultSuffix;
    // "Text (*.ext)" as Qt reads it.
    QString filter;
};

class ColorPicker
{
public:
    virtual ~ColorPicker() = default;
    // The chosen colour, or nothing when the user cancelled.
    virtual std::optional<QColor> pickColor(QWidget* parent, const QColor& initial) = 0;
};

class FontPicker
{
public:
    virtual ~FontPicker() = default;
    // The chosen font, or nothing when the user cancelled.
    virtual std::optional<FontChoice> pickFont(QWidget* parent, const FontChoice& initial) = 0;
};

class FilePicker
{
public:
    virtual ~FilePicker() = default;
    // The chosen path, or an empty text when the user cancelled.
    virtual QString pickFile(QWidget* parent, const FileRequest& request) = 0;
};

class DialogColorPicker final : public ColorPicker
{
public:
    std::optional<QColor> pickColor(QWidget* parent, const QColor& initial) override;
};

class DialogFontPicker final : public FontPicker
{
public:
    std::optional<FontChoice> pickFont(QWidget* parent, const FontChoice& initial) override;
};

class DialogFilePicker final : public FilePicker
{
public:
    QString pickFile(QWidget* parent, const FileRequest& request) override;
};
