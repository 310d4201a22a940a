#include "task_dialogs.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace {

// Presses a button of the dialog titled `title` once it shows: the task dialog's own message for
// one of its buttons, or a close for 0.
class Presser {
  public:
    Presser(const wchar_t* title, int button)
        : thread_([title, button] {
              const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
              while (std::chrono::steady_clock::now() < end) {
                  if (const HWND dialog = FindWindowW(nullptr, title); dialog != nullptr) {
                      if (button == 0)
                          PostMessageW(dialog, WM_CLOSE, 0, 0);
                      else
                          PostMessageW(dialog, TDM_CLICK_BUTTON, button, 0);
                      return;
                  }
                  std::this_thread::sleep_for(std::chrono::milliseconds(20));
              }
          }) {}
    ~Presser() { thread_.join(); }

  private:
    std::thread thread_;
};

constexpr const wchar_t* kTitle = L"Welcome to Sable Mark";

TEST(TaskDialogsTest, EachButtonGivesItsChoice) {
    const struct {
        bool info;
        int button;  // 100 + the button's place; 0 closes the dialog
        int choice;
    } cases[] = {
        {false, 100, 0}, {false, 101, 1}, {false, 102, 2}, {false, 0, 2},
        {true, 100, 3},  {true, 101, 2},  {true, 0, 2},
    };
    for (const auto& c : cases) {
        const Presser presser(kTitle, c.button);
        const int chosen =
            c.info ? ShowInfoTaskDialog(nullptr) : ShowWelcomeTaskDialog(nullptr, false);
        EXPECT_EQ(chosen, c.choice) << c.info << " " << c.button;
    }
}

}  // namespace
