// The embedded browser's address rules.
#include <gtest/gtest.h>

#include "bridge/browser_navigation.h"

namespace {

TEST(BrowserNavigationTest, OnlySecureAboutAndLocalFileAddressesPass) {
    for (const wchar_t* allowed : {L"https://page.example/app?x=1", L"httpsx:whatever",
                                   L"about:blank", L"file:///home/u/offline.html"}) {
        EXPECT_TRUE(IsNavigationAllowed(allowed)) << allowed;
    }
    for (const wchar_t* refused :
         {L"http://page.example/", L"HTTPS://page.example/", L"About:blank", L"file://host/x",
          L"ftp://x", L"data:text/html,hi", L"javascript:alert(1)", L"", L"http"}) {
        EXPECT_FALSE(IsNavigationAllowed(refused)) << refused;
    }
}

TEST(BrowserNavigationTest, NormalizeCompletesBareAddressesOnly) {
    EXPECT_EQ(NormalizeUrl(L"https://x/y"), L"https://x/y");
    EXPECT_EQ(NormalizeUrl(L"weird://x"), L"weird://x");
    EXPECT_EQ(NormalizeUrl(L"c:\\pages\\offline.html"), L"file://c:\\pages\\offline.html");
    EXPECT_EQ(NormalizeUrl(L"page.example/app"), L"http://page.example/app");
    EXPECT_EQ(NormalizeUrl(L"c"), L"http://c");
    EXPECT_EQ(NormalizeUrl(L""), L"http://");
    // The completed bare address is one the rule refuses.
    EXPECT_FALSE(IsNavigationAllowed(NormalizeUrl(L"page.example")));
}

}  // namespace
