#include "batch_commands.h"

#include "batch/batch_redaction.h"
#include "bridge/command_params.h"
#include "bridge/command_table.h"
#include "bridge/error_codes.h"

namespace {

// The ends of a run the page may report.
constexpr int kEndCodes[] = {0, 200001, 200009, 200010};

bool IsEndCode(const Json::Value& ret) {
    const bool integer = ret.type() == Json::intValue || ret.type() == Json::uintValue;
    if (!integer || !ret.isInt() || ret.asInt() < 0)
        return false;
    for (const int code : kEndCodes) {
        if (ret.asInt() == code)
            return true;
    }
    return false;
}

}  // namespace

Json::Value StartBatchRedactionDispatcher::Run() {
    const BatchRedaction::Counts counts = session_.Start();
    Json::Value data(Json::objectValue);
    data["count"] = counts.files;
    data["pageCount"] = counts.pages;
    return MakeResult(err::kOk, data);
}

Json::Value OpenNextFileForBatchDispatcher::Run() {
    return MakeResult(session_.OpenNext(), Json::Value());
}

Json::Value EndBatchRedactionDispatcher::Run() {
    if (!params.parsed())
        return Fail(err::kNoJson);
    const Json::Value& root = params.value();
    const Json::Value& ret = Member(root, "ret");
    if (!IsEndCode(ret))
        return Fail(err::kBadBatchRet);
    BatchOutcome outcome;
    outcome.ret = ret.asInt();
    outcome.message = TextOf(Member(root, "message"));
    const Json::Value& failed = Member(root, "failedFileList");
    if (failed.isArray()) {
        for (const Json::Value& file : failed)
            outcome.failedFiles.push_back(TextOf(file));
    }
    session_.End(outcome);
    return MakeResult(err::kOk, Json::Value());
}

void AddBatchCommands(CommandTable& table, BatchRedaction& session) {
    table.Add(L"startBatchRedaction", TakingNothing<StartBatchRedactionDispatcher>(session));
    table.Add(L"openNextFileForBatch", TakingNothing<OpenNextFileForBatchDispatcher>(session));
    table.Add(L"endBatchRedaction", TakingParams<EndBatchRedactionDispatcher>(session));
}
