#include "tables/host_tables.h"

namespace pdfhost {

void RegisterHostTables(TableManager& tables) {
    RegisterStringTables(tables);
    RegisterContainerTables(tables);
    RegisterExtensionTables(tables);
    RegisterAppTables(tables);
    RegisterDocumentTables(tables);
    RegisterPageTables(tables);
    RegisterObjectTables(tables);
    RegisterObjectBuildTables(tables);
    RegisterAnnotTables(tables);
    RegisterRedactTables(tables);
    RegisterViewTables(tables);
    RegisterDialogTables(tables);
    RegisterTextTables(tables);
    RegisterFormTables(tables);
    RegisterUsageTables(tables);
    RegisterRibbonTables(tables);
    RegisterPaneTables(tables);
    RegisterProgressTables(tables);
    RegisterBase64Tables(tables);
    RegisterFileDialogTables(tables);
    RegisterFlattenerTables(tables);
    RegisterFileCheckTables(tables);
}

}  // namespace pdfhost
