#pragma once

#include "common/DatePicker.h"

struct AppServices;

// The real date picker: shows FrmDate modally where the caller asked for it.
class FrmDatePicker final : public DatePicker
{
public:
    explicit FrmDatePicker(AppServices& app) : m_app(app) {}
    void pickDate(QWidget* parent, DatePickHandOver& handOver) override;

private:
    AppServices& m_app;
};
