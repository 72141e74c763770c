#include "common/Pickers.h"

#include <QColorDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDialog>

std::optional<QColor> DialogColorPicker::pickColor(QWidget* parent, const QColor& initial)
{
    const QColor chosen = QColorDialog::getColor(initial, parent);
    if (!chosen.isValid())
        return std::nullopt;
    return chosen;
}

std::optional<FontChoice> DialogFontPicker::pickFont(QWidget* parent, const FontChoice& initial)
{
    QFont start(initial.name);
    if (initial.size > 0)
        start.setPointSizeF(initial.size);
    start.setBold(initial.bold);
    start.setItalic(initial.italic);
    bool ok = false;
    const QFont chosen = QFontDialog::getFont(&ok, start, parent);
    if (!ok)
        return std::nullopt;
    FontChoice choice;
    choice.name = chosen.family();
    choice.size = chosen.pointSizeF() > 0 ? chosen.pointSizeF() : initial.size;
    choice.bold = chosen.bold();
    choice.italic = chosen.italic();
    return choice;
}

QString DialogFilePicker::pickFile(QWidget* parent, const FileRequest& request)
{
    QFileDialog dialog(parent, request.title);
    const bool open = request.mode == FileRequest::Mode::Open;
    dialog.setAcceptMode(open ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    dialog.setFileMode(open ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    if (!request.filter.isEmpty())
        dialog.setNameFilter(request.filter);
    if (!request.defaultSuffix.isEmpty())
        dialog.setDefaultSuffix(request.defaultSuffix);
    // Start beside the file given, when it names a real place; a bare pattern only
    // chooses the filter, which the name filter does already.
    const QFileInfo start(request.fileName);
    if (!request.fileName.isEmpty() && start.absoluteDir().exists() && !request.fileName.contains(QLatin1Char('*'))) {
        dialog.setDirectory(start.absolutePath());
        if (!start.isDir())
            dialog.selectFile(start.fileName());
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return QString();
    return dialog.selectedFiles().front();
}
