// Registration of pdfhost's implementation of the host operations, one function per group.
#pragma once

#include "extension_registry.h"
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
void RegisterUsageTables(TableManager& tables);
void RegisterRibbonTables(TableManager& tables);
void RegisterPaneTables(TableManager& tables);
void RegisterProgressTables(TableManager& tables);
void RegisterBase64Tables(TableManager& tables);
void RegisterFileDialogTables(TableManager& tables);
void RegisterFlattenerTables(TableManager& tables);
void RegisterFileCheckTables(TableManager& tables);

// All of the above.
void RegisterHostTables(TableManager& tables);

// The "login" extension table over the host's local account.
void RegisterLoginTable(ExtensionRegistry& extensions);
// "Browser Extension HFT": the outside browser.
void RegisterBrowserExtension(ExtensionRegistry& extensions);
// "Browser Extension HFT", functions 1 and 2: the web view lent to a plug-in's window.
void RegisterWebPageFunctions(ExtensionRegistry& extensions);
// "OCRRecognition extension HFT": text recognition of scanned pages.
void RegisterOcrExtension(ExtensionRegistry& extensions);

}  // namespace pdfhost
