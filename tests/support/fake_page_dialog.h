// FakePageDialog: a page dialog for unit tests that writes each call it gets as one line into a
// log the test keeps, e.g. "pane Reload 1" or "pane CallScript __dispatchEvent <argument>".
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "bridge/page_dialog.h"
#include "util/utf.h"

class FakePageDialog final : public BatchPageDialog {
  public:
    FakePageDialog(std::vector<std::string>& log, std::string name)
        : log_(log), name_(std::move(name)) {}

    HostWindow Window() const override {
        return reinterpret_cast<HostWindow>(const_cast<FakePageDialog*>(this));
    }
    void Show() override { Write("Show"); }
    void Reload(bool rebuild) override { Write(std::string("Reload ") + (rebuild ? "1" : "0")); }
    void CallScript(const std::wstring& name, const std::vector<std::wstring>& arguments,
                    std::wstring* result) override {
        std::string line = "CallScript " + ToUtf8(name);
        for (const std::wstring& argument : arguments)
            line += " " + ToUtf8(argument);
        Write(line);
        if (result != nullptr)
            *result = scriptResult;
    }
    void HideHostView() override { Write("HideHostView"); }
    // Runs `duringRun` inside the modal run; an EndModal then gives the run's result.
    int RunModal() override {
        Write("RunModal");
        if (duringRun)
            duringRun();
        return endedWith.value_or(modalResult);
    }
    void EndModal(int result) override {
        Write("EndModal " + std::to_string(result));
        endedWith = result;
    }
    void SetVisible(bool visible) override {
        Write(std::string("SetVisible ") + (visible ? "1" : "0"));
    }

    std::wstring scriptResult;
    int modalResult = 1;
    std::function<void()> duringRun;
    std::optional<int> endedWith;

  private:
    void Write(const std::string& text) { log_.push_back(name_ + " " + text); }

    std::vector<std::string>& log_;
    std::string name_;
};
