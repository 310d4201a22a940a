// The account's bridge commands: sign-in and the signed-in user.
#pragma once

class Brevan;
class CommandTable;

void AddAccountCommands(CommandTable& table, Brevan& app);
