#include "common/UserAction.h"

#include "common/AppServices.h"
#include "common/Prompter.h"
#include "store/DatabaseError.h"
#include "store/StoreLog.h"

bool RunUserAction(AppServices& app, QWidget* parent, const std::function<void()>& action, bool report)
{
    const int depth = app.db().transactionDepth();
    try {
        action();
        return true;
    } catch (const DatabaseError& error) {
        qCWarning(lcStore) << "user action failed:" << error.engineMessage() << error.sql();
        app.db().RollbackTo(depth);
        if (report && app.prompter) {
            app.prompter->inform(parent, QStringLiteral("データベースの処理に失敗しました。\n") + error.engineMessage(),
                                 PromptIcon::Critical);
        }
        return false;
    }
}
