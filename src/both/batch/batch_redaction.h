// BatchRedaction: carries the files of a batch through the page one after the other. Run lets the
// user choose the files and shows the page dialog; the page then starts the run, opens each file
// in turn, has it saved under the output rule, and ends the run with its result.
#pragma once

#include <deque>
#include <map>
#include <string>

#include "batch/batch_choice.h"
#include "batch/batch_session_context.h"
#include "document/batch_document_session.h"

class BatchRedaction final : public BatchDocumentSession {
  public:
    enum class State { Idle, Choosing, WaitingForPage, Running, Reporting };

    // Results of OpenNext.
    static constexpr int kOpened = 0;
    static constexpr int kQueueEmpty = -1;
    static constexpr int kNotOpened = 1;

    explicit BatchRedaction(BatchSessionContext& context) : context_(context) {}

    // The ribbon's batch command: the file list, then the page dialog's modal run.
    void Run();

    struct Counts {
        int files = 0;
        int pages = 0;
    };
    // The page starts the run: the page dialog is hidden unless it is to stay visible.
    Counts Start();
    // Makes the next queued file the current document.
    int OpenNext();
    void SaveCurrent() override;
    bool CurrentWasOpen() const override { return currentWasOpen_; }
    // The page ends the run: closes the page dialog, or shows the result first.
    void End(const BatchOutcome& outcome);

    State state() const { return state_; }
    bool batchStarted() const { return batchStarted_; }
    BatchPageDialog* dialog() const { return dialog_; }
    const std::deque<std::wstring>& queue() const { return queue_; }
    const OutputOptions& outputOptions() const { return outputOptions_; }
    const std::wstring& currentPath() const { return currentPath_; }
    const std::map<std::wstring, int>& openDocs() const { return openDocs_; }

  private:
    void ShowPageDialog(const BatchChoice& choice);
    void SaveOverSource(HostDoc doc);

    BatchSessionContext& context_;
    State state_ = State::Idle;
    bool currentWasOpen_ = false;
    std::deque<std::wstring> queue_;
    int fileCount_ = 0;
    int pageCount_ = 0;
    std::wstring currentPath_;
    std::map<std::wstring, int> openDocs_;
    BatchPageDialog* dialog_ = nullptr;
    // Set by the first start of a run; stays set for the application's life, as do the options
    // of the last run.
    bool batchStarted_ = false;
    OutputOptions outputOptions_;
};
