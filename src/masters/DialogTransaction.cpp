#include "masters/DialogTransaction.h"

#include "store/DatabaseConnection.h"

void DialogTransaction::begin()
{
    rollback();
    const int outer = m_db.transactionDepth();
    m_db.BeginTrans();
    m_outerDepth = outer;
}

bool DialogTransaction::isOpen() const
{
    return m_outerDepth >= 0 && m_db.transactionDepth() > m_outerDepth;
}

void DialogTransaction::commit()
{
    if (!isOpen())
        return;
    // Levels a failed action left above ours are not part of what the user confirmed.
    m_db.RollbackTo(m_outerDepth + 1);
    m_outerDepth = -1;
    m_db.CommitTrans();
}

void DialogTransaction::rollback()
{
    if (isOpen())
        m_db.RollbackTo(m_outerDepth);
    m_outerDepth = -1;
}
