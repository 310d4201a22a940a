// The dock that holds a plug-in's task pane in a main window. It tells its owner when the user
// closes it, as opposed to the host hiding it.
#pragma once

#include <QDockWidget>
#include <functional>

namespace pdfhost::ui {

class TaskPaneDock : public QDockWidget {
    Q_OBJECT

  public:
    TaskPaneDock(const QString& name, QWidget* parent);

    void SetOnUserClose(std::function<void()> onClose) { onUserClose_ = std::move(onClose); }

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    std::function<void()> onUserClose_;
};

}  // namespace pdfhost::ui
