#pragma once

#include <QString>

#include <stdexcept>

// The one exception type of the program: a statement the engine refused.
// It is caught at the edge of the user action that ran the statement (see UserAction.h).
class DatabaseError final : public std::runtime_error
{
public:
    DatabaseError(const QString& engineMessage, const QString& sql)
        : std::runtime_error(engineMessage.toStdString()), m_engineMessage(engineMessage), m_sql(sql)
    {}
    const QString& engineMessage() const { return m_engineMessage; }
    const QString& sql() const { return m_sql; }

private:
    QString m_engineMessage;
    QString m_sql;
};
