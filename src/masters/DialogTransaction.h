#pragma once

class DatabaseConnection;

// The transaction a master dialog holds for as long as it is open. It remembers the level
// it was opened on, so a dialog opened on top of another one's transaction commits or
// rolls back only its own savepoint and leaves the outer level alone.
class DialogTransaction final
{
public:
    explicit DialogTransaction(DatabaseConnection& db) : m_db(db) {}
    // A dialog destroyed without being closed never keeps what it wrote.
    ~DialogTransaction() { rollback(); }
    DialogTransaction(const DialogTransaction&) = delete;
    DialogTransaction& operator=(const DialogTransaction&) = delete;

    // Raises DatabaseError when the engine refuses.
    void begin();
    // Raises DatabaseError when the engine refuses; either way the level is no longer ours.
    void commit();
    // Never raises; does nothing when the level is no longer open.
    void rollback();
    bool isOpen() const;

private:
    DatabaseConnection& m_db;
    // The depth the connection had before begin(); -1 while we hold nothing.
    int m_outerDepth = -1;
};
