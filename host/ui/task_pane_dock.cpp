#include "ui/task_pane_dock.h"

#include <QCloseEvent>

namespace pdfhost::ui {

TaskPaneDock::TaskPaneDock(const QString& name, QWidget* parent) : QDockWidget(parent) {
    setObjectName(name);
    setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable);
    setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    setMinimumWidth(320);
}

void TaskPaneDock::closeEvent(QCloseEvent* event) {
    QDockWidget::closeEvent(event);
    if (event->isAccepted() && onUserClose_)
        onUserClose_();
}

}  // namespace pdfhost::ui
