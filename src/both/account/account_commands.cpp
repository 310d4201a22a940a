#include "account_commands.h"

#include "account/sign_in_dispatchers.h"
#include "bridge/command_table.h"

void AddAccountCommands(CommandTable& table, Brevan& app) {
    table.Add(L"loginIn", TakingNothing<LoginInDispatcher>(app));
    table.Add(L"getUser", TakingNothing<GetUserDispatcher>(app));
    table.Add(L"getUserJWT", TakingNothing<GetUserJWTDispatcher>(app));
}
