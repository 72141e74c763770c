#include "support/MainWindowKit.h"

#include "mainwindow/FrmMain.h"
#include "support/TestKit.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTimer>
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
{
    auto* timer = new QTimer;
    timer->setInterval(10);
    m_timer = timer;
    QObject::connect(timer, &QTimer::timeout, timer, [timer, item, state = m_state] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu || !menu->isVisible())
            return;
        timer->stop();
        timer->deleteLater();
        state->opened = true;
        state->menu = menu->objectName();
        QAction* chosen = nullptr;
        for (QAction* action : menu->actions()) {
            if (!item.isEmpty() && action->objectName() == item)
                chosen = action;
        }
        if (!chosen || chosen->isSeparator()) {
            menu->close();
            return;
        }
        QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(chosen).center());
    });
    timer->start();
}

MenuAnswer::~MenuAnswer()
{
    if (m_timer)
        m_timer->deleteLater();
}

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
