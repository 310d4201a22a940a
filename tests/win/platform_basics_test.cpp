#include <windows.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cwctype>
#include <fstream>
#include <set>

#include "document/document_registry.h"
#include "system_paths.h"
#include "win_timers.h"
#include "window_test_support.h"
#include "windows_system_name.h"

namespace {

void PumpFor(std::chrono::milliseconds span) {
    const auto end = std::chrono::steady_clock::now() + span;
    while (std::chrono::steady_clock::now() < end) {
        PumpMessages();
        Sleep(5);
    }
}

bool Exists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

TEST(NewGuidTextTest, SystemGuidsAreUpperCaseInBracesAndFresh) {
    std::set<std::wstring> seen;
    for (int i = 0; i < 200; ++i) {
        const std::wstring guid = NewGuidText();
        ASSERT_EQ(guid.size(), 38u);
        EXPECT_EQ(guid.front(), L'{');
        EXPECT_EQ(guid.back(), L'}');
        for (std::size_t at : {9u, 14u, 19u, 24u})
            EXPECT_EQ(guid[at], L'-') << at;
        for (wchar_t c : guid)
            EXPECT_FALSE(std::iswlower(c)) << static_cast<int>(c);
        seen.insert(guid);
    }
    EXPECT_EQ(seen.size(), 200u);
}

TEST(WindowsSystemNameTest, NamesByVersionProductAndPlatform) {
    const struct {
        WindowsVersion version;
        const char* name;
    } cases[] = {
        {{6, 3, 2, false, true, false}, "Microsoft Windows 8.1"},
        {{10, 0, 2, false, true, false}, "Microsoft Windows 10"},
        {{4, 0, 1}, "Microsoft Windows 95"},
        {{4, 10, 1}, "Microsoft Windows 98"},
        {{4, 90, 1}, "Microsoft Windows Me"},
        {{4, 0, 2}, "Microsoft Windows NT 4.0"},
        {{5, 0, 2}, "Microsoft Windows 2000"},
        {{5, 1, 2}, "Microsoft Windows XP"},
        {{5, 2, 2, true, true, false}, "Microsoft Windows XP Professional x64 Edition"},
        {{5, 2, 2, false, true, false}, "Microsoft Windows Server 2003"},
        {{5, 2, 2, false, false, true}, "Microsoft Windows Server 2003 R2"},
        {{6, 0, 2, true}, "Microsoft Windows Vista"},
        {{6, 0, 2, false}, "Microsoft Windows Server 2008"},
        {{6, 1, 2, true}, "Microsoft Windows 7"},
        {{6, 1, 2, false}, "Microsoft Windows Server 2008 R2"},
        {{6, 2, 2, true}, "Microsoft Windows 8"},
        {{6, 2, 2, false}, "Microsoft Windows Server 2012"},
        {{11, 0, 2}, ""},
        {{3, 51, 2}, ""},
        {{4, 20, 1}, ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(WindowsSystemName(c.version), c.name)
            << c.version.major << "." << c.version.minor;
    }
}

TEST(WinTimersTest, TicksFromTheMessageLoopUntilKilled) {
    WinTimers timers;
    int fast = 0;
    int other = 0;
    const unsigned first = timers.Start(10, [&] { ++fast; });
    const unsigned second = timers.Start(10, [&] { ++other; });
    ASSERT_NE(first, 0u);
    ASSERT_NE(second, 0u);
    EXPECT_NE(first, second);
    PumpFor(std::chrono::milliseconds(150));
    EXPECT_GE(fast, 2);
    EXPECT_GE(other, 2);

    timers.Kill(first);
    timers.Kill(first);
    timers.Kill(12345);
    const int stopped = fast;
    PumpFor(std::chrono::milliseconds(80));
    EXPECT_EQ(fast, stopped);
    EXPECT_GT(other, 2);
}

TEST(WinTimersTest, ATickMayKillItsOwnTimer) {
    WinTimers timers;
    int ticks = 0;
    unsigned id = 0;
    id = timers.Start(5, [&] {
        ++ticks;
        timers.Kill(id);
    });
    PumpFor(std::chrono::milliseconds(80));
    EXPECT_EQ(ticks, 1);
}

TEST(SystemPathsTest, TempFolderAndThisModule) {
    const std::wstring temp = SystemTempFolder();
    ASSERT_FALSE(temp.empty());
    EXPECT_EQ(temp.back(), L'\\');
    EXPECT_TRUE(Exists(temp));
    // The code is linked into the test program here.
    const std::wstring module = ThisModulePath();
    ASSERT_GT(module.size(), 4u);
    EXPECT_EQ(module.substr(module.size() - 4), L".exe");
    EXPECT_TRUE(Exists(module));
}

}  // namespace
