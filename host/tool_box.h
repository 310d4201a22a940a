// The editor's tools (the hand that moves the page, the text selection, the annotation
// drawing) and which one is current. Tools are found by name; a handle stands for one tool.
#pragma once

#include <string>
#include <vector>

#include "host_abi.h"

namespace pdfhost {

class ToolBox {
  public:
    ToolBox();

    // The tool of that name ("Hand", "Select", "Annotate"), or null.
    HostTool Find(const std::string& name) const;
    // Makes the tool current; false for a handle that is no tool.
    bool SetCurrent(HostTool tool);
    const std::string& CurrentName() const { return tools_[current_].name; }

  private:
    struct Tool {
        std::string name;
        HostTool handle;
    };
    std::vector<Tool> tools_;
    std::size_t current_ = 0;
};

}  // namespace pdfhost
