#include "command_table.h"

namespace {

constexpr std::wstring_view kModule = L"base";

}  // namespace

void CommandTable::Add(std::wstring_view name, Factory make) {
    commands_.insert_or_assign(std::wstring(name), std::move(make));
}

std::unique_ptr<BaseDispatcher> CommandTable::Create(const std::wstring& module,
                                                     const std::wstring& command,
                                                     const CommandRequest& request) const {
    std::unique_ptr<BaseDispatcher> dispatcher;
    if (module == kModule) {
        if (const auto found = commands_.find(command); found != commands_.end())
            dispatcher = found->second(request);
    }
    if (!dispatcher)
        dispatcher = std::make_unique<BaseDispatcher>();
    dispatcher->activity = watch_ ? watch_() : nullptr;
    return dispatcher;
}
