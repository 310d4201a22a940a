#include "automation/user_redaction.h"

#include <algorithm>

#include "host_app.h"
#include "user_redaction_mark.h"

namespace pdfhost {

std::string DrawUserRedaction(HostApp& app, HostDocument& document, const Json::Value& line) {
    const Json::Value& page = line["page"];
    const Json::Value& rect = line["rect"];
    if (!page.isInt() || page.asInt() < 0 || page.asInt() >= document.Engine().PageCount())
        return "\"userRedact\" needs a \"page\" of document " + std::to_string(document.Number());
    if (!rect.isArray() || rect.size() != 4 ||
        !std::all_of(rect.begin(), rect.end(),
                     [](const Json::Value& v) { return v.isNumeric(); })) {
        return "\"userRedact\" needs a \"rect\" of four numbers";
    }
    const engine::Rect area{std::min(rect[0].asFloat(), rect[2].asFloat()),
                            std::min(rect[1].asFloat(), rect[3].asFloat()),
                            std::max(rect[0].asFloat(), rect[2].asFloat()),
                            std::max(rect[1].asFloat(), rect[3].asFloat())};
    if (area.Width() <= 0 || area.Height() <= 0)
        return "\"userRedact\" needs a \"rect\" with an area";
    if (AddUserRedaction(app, document, page.asInt(), {area}) == nullptr)
        return "document " + std::to_string(document.Number()) + " takes no annotation";
    return {};
}

}  // namespace pdfhost
