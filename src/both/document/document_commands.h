// The document services' bridge commands: the current document, files, form fields, page texts,
// saving, closing and the progress bar.
#pragma once

struct DocumentServices;
class CommandTable;

void AddDocumentCommands(CommandTable& table, const DocumentServices& services);
