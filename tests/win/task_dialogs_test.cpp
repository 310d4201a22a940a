#include "task_dialogs.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include "window_test_support.h"

namespace {

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
        const ModalAnswer press(L"Welcome to Sable Mark", [&](HWND dialog) {
            if (c.button == 0)
                PostMessageW(dialog, WM_CLOSE, 0, 0);
            else
                PostMessageW(dialog, TDM_CLICK_BUTTON, c.button, 0);
        });
        const int chosen =
            c.info ? ShowInfoTaskDialog(nullptr) : ShowWelcomeTaskDialog(nullptr, false);
        EXPECT_TRUE(press.Answered());
        EXPECT_EQ(chosen, c.choice) << c.info << " " << c.button;
    }
}

}  // namespace
