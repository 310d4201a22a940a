// The page's commands of a batch run: startBatchRedaction, openNextFileForBatch and
// endBatchRedaction, served by the application's batch session.
#pragma once

#include "bridge/base_dispatcher.h"

class BatchRedaction;
class CommandTable;

// Starts the run; replies with the number of files and their pages.
class StartBatchRedactionDispatcher : public BaseDispatcher {
  public:
    explicit StartBatchRedactionDispatcher(BatchRedaction& session) : session_(session) {}
    Json::Value Run() override;

  private:
    BatchRedaction& session_;
};

// Opens the next file; `ret` is the session's result.
class OpenNextFileForBatchDispatcher : public BaseDispatcher {
  public:
    explicit OpenNextFileForBatchDispatcher(BatchRedaction& session) : session_(session) {}
    Json::Value Run() override;

  private:
    BatchRedaction& session_;
};

// Ends the run with the page's result, message and failed files.
class EndBatchRedactionDispatcher : public BaseDispatcher {
  public:
    EndBatchRedactionDispatcher(BatchRedaction& session, const CommandParams& params)
        : BaseDispatcher(params), session_(session) {}
    Json::Value Run() override;

  private:
    BatchRedaction& session_;
};

void AddBatchCommands(CommandTable& table, BatchRedaction& session);
