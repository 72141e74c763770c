#include "support/MainWindowKit.h"

#include "mainwindow/FrmMain.h"
#include "support/TestKit.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QtTest>

std::unique_ptr<FrmMain> StartMainWindow(TestEnvironment& env)
{
    env.services.connection.reset();
    auto main = std::make_unique<FrmMain>(env.services);
    if (!main->Form_Load())
        qFatal("the main window did not start");
    main->show();
    if (!QTest::qWaitForWindowExposed(main.get()))
        qFatal("the main window was not shown");
    return main;
}

MenuAnswer::MenuAnswer(const QString& item)
    : m_answer(
          [item](QWidget* popup) {
              auto* menu = static_cast<QMenu*>(popup);
              for (QAction* action : menu->actions()) {
                  if (!item.isEmpty() && action->objectName() == item && !action->isSeparator()) {
                      QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(action).center());
                      return;
                  }
              }
              menu->close();
          },
          true)
{}

void ClickControl(FrmMain& main, const QString& name, Qt::MouseButton button)
{
    QWidget* control = Control<QWidget>(&main, qPrintable(name));
    if (button != Qt::RightButton) {
        QTest::mouseClick(control, button);
        return;
    }
    // The desktop turns a right click into a context-menu request; send that request, as
    // the offscreen platform makes none of its own.
    const QPoint centre = control->rect().center();
    QContextMenuEvent request(QContextMenuEvent::Mouse, centre, control->mapToGlobal(centre));
    QApplication::sendEvent(control, &request);
}
