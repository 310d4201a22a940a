// The account's bridge commands: sign-in and the signed-in user.
#pragma once

struct AccountServices;
class CommandTable;

void AddAccountCommands(CommandTable& table, const AccountServices& services);
