#pragma once

#include <QString>

// Statements are written in the dialect the data was first kept in. SQLite understands
// nearly all of it; the two differences are rewritten here, outside quoted strings only:
//   #yyyy/mm/dd HH:MM:SS#  ->  'yyyy/mm/dd HH:MM:SS'
//   DELETE * FROM          ->  DELETE FROM
QString RewriteJetSql(const QString& sql);

// Splits a script into statements at semicolons that are not inside a quoted string.
// Blank statements and "--" comment lines are dropped.
QStringList SplitSqlScript(const QString& script);
