#include "tool_box.h"

#include "handle_pool.h"

namespace pdfhost {

ToolBox::ToolBox() {
    // The text selection is where the editor starts.
    for (const char* name : {"Select", "Hand", "Annotate"})
        tools_.push_back(Tool{name, reinterpret_cast<HostTool>(NextHandleValue())});
}

HostTool ToolBox::Find(const std::string& name) const {
    for (const Tool& tool : tools_) {
        if (tool.name == name)
            return tool.handle;
    }
    return nullptr;
}

bool ToolBox::SetCurrent(HostTool tool) {
    for (std::size_t i = 0; i < tools_.size(); ++i) {
        if (tools_[i].handle == tool) {
            current_ = i;
            return true;
        }
    }
    return false;
}

}  // namespace pdfhost
