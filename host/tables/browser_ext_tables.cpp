// The "Browser Extension HFT" table. pdfhost has no browser tabs of its own: an address opens in
// the desktop's browser.
#include <QDesktopServices>
#include <QString>
#include <QUrl>

#include "handle_pool.h"
#include "tables/host_tables.h"
#include "tables/table_support.h"

namespace pdfhost {
namespace {

using namespace tables;
using hostops::ExtOp;

// Opens `url` outside the host. The record's callbacks have nothing to serve here. On success
// `tabOut` gets a token that stands for where the address went, and the answer is 1.
int BrowserExtOpenUrl(const wchar_t* url, int, int, HostBrowserTabRecord*, void** tabOut) {
    return Guarded(0, [&](HostApp&) {
        if (url == nullptr || *url == 0)
            return 0;
        const QUrl address(QString::fromStdWString(url));
        if (!address.isValid() || !QDesktopServices::openUrl(address))
            return 0;
        if (tabOut != nullptr)
            *tabOut = reinterpret_cast<void*>(NextHandleValue());
        return 1;
    });
}

}  // namespace

void RegisterBrowserExtension(ExtensionRegistry& extensions) {
    extensions.Register<ExtOp::BrowserExtOpenUrl>(&BrowserExtOpenUrl);
    RegisterWebPageFunctions(extensions);
}

}  // namespace pdfhost
