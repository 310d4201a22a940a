// The redaction's bridge commands: searching, marking, annotating, point notes, replacing and
// applying.
#pragma once

struct RedactionServices;
class CommandTable;

void AddRedactionCommands(CommandTable& table, const RedactionServices& services);
