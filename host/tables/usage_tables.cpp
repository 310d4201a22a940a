// The usage report of the plug-ins: appended to the profile's usage file.
#include "tables/host_tables.h"
#include "tables/table_support.h"

namespace pdfhost {
namespace {

using namespace tables;
using hostops::Op;

// A null or unknown string handle counts as the empty text.
std::string TextOf(HostApp& app, HostWideString handle) {
    const WideStringValue* value = FindWide(app, handle);
    return value != nullptr ? Utf8Of(value->text) : std::string();
}

void AppReportUsage(HostWideString name, HostWideString, HostWideString, HostWideString type,
                    HostWideString, HostWideString, HostWideString details, HostWideString module,
                    HostWideString version, HostWideString extra1, HostWideString extra2,
                    int last) {
    Guarded([&](HostApp& app) {
        app.Usage().Append(UsageReport{TextOf(app, name), TextOf(app, type), TextOf(app, details),
                                       TextOf(app, module), TextOf(app, version),
                                       TextOf(app, extra1), TextOf(app, extra2), last});
    });
}

}  // namespace

void RegisterUsageTables(TableManager& tables) {
    tables.Register<Op::HostAppReportUsage>(&AppReportUsage);
}

}  // namespace pdfhost
