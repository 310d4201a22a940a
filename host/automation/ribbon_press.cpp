#include "automation/ribbon_press.h"

#include "host_app.h"
#include "wide_text.h"

namespace pdfhost {

std::string PressRibbonEntry(HostApp& app, const Json::Value& line) {
    if (!line["item"].isString() || line["item"].asString().empty())
        return "\"ribbon\" needs an \"item\" name";
    const std::string name = line["item"].asString();
    QMainWindow* frame = app.MainWindow();
    const uintptr_t bar =
        frame != nullptr ? app.Ribbons().ExistingBarOf(HostApp::FrameHandle(*frame)) : 0;
    const RibbonNode* button = app.Ribbons().FindButtonByName(bar, WideOf(name));
    if (button == nullptr || button->execute == nullptr)
        return "no ribbon item: " + name;
    if (!app.Ribbons().Press(button->handle))
        return "disabled: " + name;
    return {};
}

}  // namespace pdfhost
