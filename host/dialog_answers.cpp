#include "dialog_answers.h"

namespace pdfhost {

void DialogAnswers::Queue(const std::string& kind, Json::Value answer) {
    queues_[kind].push_back(std::move(answer));
}

std::optional<Json::Value> DialogAnswers::Take(const std::string& kind) {
    const auto it = queues_.find(kind);
    if (it == queues_.end() || it->second.empty())
        return std::nullopt;
    Json::Value answer = std::move(it->second.front());
    it->second.pop_front();
    return answer;
}

std::size_t DialogAnswers::Pending(const std::string& kind) const {
    const auto it = queues_.find(kind);
    return it == queues_.end() ? 0 : it->second.size();
}

}  // namespace pdfhost
