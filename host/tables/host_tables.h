// Registration of pdfhost's implementation of the host operations, one function per group.
#pragma once

#include "table_manager.h"

namespace pdfhost {

void RegisterStringTables(TableManager& tables);
void RegisterContainerTables(TableManager& tables);
void RegisterExtensionTables(TableManager& tables);
void RegisterAppTables(TableManager& tables);
void RegisterDocumentTables(TableManager& tables);
void RegisterPageTables(TableManager& tables);
void RegisterObjectTables(TableManager& tables);
void RegisterObjectBuildTables(TableManager& tables);
void RegisterAnnotTables(TableManager& tables);
void RegisterRedactTables(TableManager& tables);
void RegisterViewTables(TableManager& tables);
void RegisterDialogTables(TableManager& tables);
void RegisterTextTables(TableManager& tables);
void RegisterFormTables(TableManager& tables);

// All of the above.
void RegisterHostTables(TableManager& tables);

}  // namespace pdfhost
