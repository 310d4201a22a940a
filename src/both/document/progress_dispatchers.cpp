#include "progress_dispatchers.h"

#include <optional>

#include "bridge/command_params.h"
#include "bridge/error_codes.h"
#include "document/document_services.h"
#include "document/progress_bar_host.h"
#include "redaction/request_fields.h"
#include "util/utf.h"

namespace {

// A JSON integer that is not negative (the largest ones read as the largest signed value).
std::optional<uint64_t> NonNegativeInteger(const Json::Value& value) {
    const std::optional<int64_t> number = JsonInteger(value);
    if (!number || *number < 0)
        return std::nullopt;
    return static_cast<uint64_t>(*number);
}

}  // namespace

Json::Value CreateProgressBarDispatcher::Run() {
    if (!params.parsed())
        return Fail(err::kNoJson);
    const Json::Value& root = params.value();
    const Json::Value& title = Member(root, "title");
    if (!title.isString() || title.asString().empty())
        return Fail(err::kNoTitle);
    const std::optional<uint64_t> seconds = NonNegativeInteger(Member(root, "timeout"));
    if (!seconds)
        return Fail(err::kTimeout);
    if (services_.progressBar)
        services_.progressBar->showTimed(FromUtf8(title.asString()), *seconds);
    return MakeResult(err::kOk, Json::Value());
}

Json::Value UpdateProgressBarDispatcher::Run() {
    if (!params.parsed())
        return Fail(err::kNoJson);
    const Json::Value& root = params.value();
    const std::optional<uint64_t> position = NonNegativeInteger(Member(root, "currentPos"));
    if (!position || *position > 100)
        return Fail(err::kNoCurrentPosition);
    const Json::Value& title = Member(root, "title");
    if (services_.progressBar) {
        services_.progressBar->update(static_cast<int>(*position), title.isString()
                                                                       ? FromUtf8(title.asString())
                                                                       : std::wstring());
    }
    return MakeResult(err::kOk, Json::Value());
}

Json::Value DestroyProgressBarDispatcher::Run() {
    if (services_.progressBar)
        services_.progressBar->close();
    return MakeResult(err::kOk, Json::Value());
}
