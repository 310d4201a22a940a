// The redaction's bridge commands: searching, marking, annotating, point notes, replacing and
// applying.
#pragma once

class Brevan;
class CommandTable;

void AddRedactionCommands(CommandTable& table, Brevan& app);
