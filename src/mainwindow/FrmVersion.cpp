#include "mainwindow/FrmVersion.h"

#include "common/AppIcon.h"
#include "common/AppInfo.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

FrmVersion::FrmVersion(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("FrmVersion"));
    setWindowTitle(QStringLiteral("バージョン情報"));
    setModal(true);

    auto* icon = new QLabel(this);
    icon->setObjectName(QStringLiteral("ImgIcon"));
    icon->setPixmap(AppIcon().pixmap(48, 48));

    auto* title = new QLabel(AppInfo::productTitle() + QLatin1Char(' ') + AppInfo::versionText(), this);
    title->setObjectName(QStringLiteral("LabTitle"));
    QFont big = title->font();
    big.setPointSizeF(big.pointSizeF() * 1.4);
    big.setBold(true);
    title->setFont(big);

    auto* ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("ComOK"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);

    auto* top = new QHBoxLayout;
    top->addWidget(icon);
    top->addSpacing(12);
    top->addWidget(title, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addSpacing(12);
    layout->addLayout(buttons);
    setFixedSize(sizeHint().expandedTo(QSize(300, 0)));
}
