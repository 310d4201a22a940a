#include "account_commands.h"

#include "account/sign_in_dispatchers.h"
#include "bridge/command_table.h"

void AddAccountCommands(CommandTable& table, const AccountServices& services) {
    table.Add(L"loginIn", TakingNothing<LoginInDispatcher>(services));
    table.Add(L"getUser", TakingNothing<GetUserDispatcher>(services));
    table.Add(L"getUserJWT", TakingNothing<GetUserJWTDispatcher>(services));
}
