#include "views/FrmDatePicker.h"

#include "views/FrmDate.h"

void FrmDatePicker::pickDate(QWidget* parent, DatePickHandOver& handOver)
{
    FrmDate picker(m_app, handOver, parent);
    picker.exec();
}
