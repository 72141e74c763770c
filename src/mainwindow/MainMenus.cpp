#include "mainwindow/MainMenus.h"

#include <QMenu>

namespace {

// One row of a menu: an item with its caption and command word (empty for the items that
// act at once), or a separator when the caption is empty.
struct MenuItem
{
    const char* name;
    const char* caption;
    const char* command;
};

QMenu* BuildMenu(QWidget* owner, QString& menuCommand, const char* name, const char* title,
                 std::initializer_list<MenuItem> items)
{
    auto* menu = new QMenu(QString::fromUtf8(title), owner);
    menu->setObjectName(QString::fromLatin1(name));
    for (const MenuItem& item : items) {
        QAction* action = nullptr;
        if (*item.caption == '\0') {
            action = menu->addSeparator();
        } else {
            action = menu->addAction(QString::fromUtf8(item.caption));
            const QString command = QString::fromLatin1(item.command);
            if (!command.isEmpty())
                QObject::connect(action, &QAction::triggered, menu, [&menuCommand, command] { menuCommand = command; });
        }
        action->setObjectName(QString::fromLatin1(item.name));
    }
    return menu;
}

} // namespace

QAction* MainMenus::item(const QString& name) const
{
    for (QMenu* menu : {MnuScheduleEditMenu, MnuEntry, MnuJumpDay, MnuSubMenu, MnuHelp, MnuTaskMenu}) {
        if (!menu)
            continue;
        for (QAction* action : menu->actions()) {
            if (action->objectName() == name)
                return action;
        }
    }
    return nullptr;
}

MainMenus BuildMainMenus(QWidget* owner, QString& menuCommand)
{
    MainMenus menus;
    menus.MnuScheduleEditMenu = BuildMenu(owner, menuCommand, "MnuScheduleEditMenu", "スケジュール",
                                          {
                                              {"MnuScheduleEdit", "編集", "SCHEDULE_UPDATE"},
                                              {"MnuScheduleDel", "削除", "SCHEDULE_DELETE"},
                                          });
    menus.MnuEntry = BuildMenu(owner, menuCommand, "MnuEntry", "新規登録",
                               {
                                   {"MnuSchedule", "スケジュール", "SCHEDULE_INSERT"},
                                   {"MnuTask", "タスク", "TASK_INSERT"},
                               });
    menus.MnuJumpDay = BuildMenu(owner, menuCommand, "MnuJumpDay", "日付ジャンプ",
                                 {
                                     {"MnuToday", "今日", ""},
                                     {"MnuLine1", "", ""},
                                     {"MnuMonth1", " 1月", ""},
                                     {"MnuMonth2", " 2月", ""},
                                     {"MnuMonth3", " 3月", ""},
                                     {"MnuMonth4", " 4月", ""},
                                     {"MnuMonth5", " 5月", ""},
                                     {"MnuMonth6", " 6月", ""},
                                     {"MnuMonth7", " 7月", ""},
                                     {"MnuMonth8", " 8月", ""},
                                     {"MnuMonth9", " 9月", ""},
                                     {"MnuMonth10", "10月", ""},
                                     {"MnuMonth11", "11月", ""},
                                     {"MnuMonth12", "12月", ""},
                                 });
    menus.MnuSubMenu = BuildMenu(owner, menuCommand, "MnuSubMenu", "サブメニュー",
                                 {
                                     {"MnuList", "一覧表示", "LIST"},
                                     {"MnuOff", "休日設定", "DAYOFF"},
                                     {"MnuLine3", "", ""},
                                     {"MnuPost", "付箋紙の新規作成", "POST"},
                                     {"MnuLine", "", ""},
                                     {"MnuSetting1", "設定", "SETTING1"},
                                 });
    menus.MnuHelp = BuildMenu(owner, menuCommand, "MnuHelp", "ヘルプ",
                              {
                                  {"MnuOnline", "オンラインヘルプ", "ONLINE"},
                                  {"MnuLine2", "", ""},
                                  {"MnuVersion", "バージョン情報", "VERSION"},
                              });
    menus.MnuTaskMenu = BuildMenu(owner, menuCommand, "MnuTaskMenu", "タスクバーメニュー",
                                  {
                                      {"MnuMainOpen", "カレンダーを開く", ""},
                                      {"MnuTaskPost", "付箋紙の新規作成", ""},
                                      {"MnuLine4", "", ""},
                                      {"MnuEnd", "終了", ""},
                                  });
    return menus;
}
