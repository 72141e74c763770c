#pragma once

#include <QDialog>

// "バージョン情報": the product title with its version, and OK.
class FrmVersion final : public QDialog
{
    Q_OBJECT
public:
    explicit FrmVersion(QWidget* parent = nullptr);
};
