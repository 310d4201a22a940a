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

// All of the above.
void RegisterHostTables(TableManager& tables);

}  // namespace pdfhost
