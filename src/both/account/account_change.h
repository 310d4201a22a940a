// The host's sign-in table tells of a change of account through one plain function, registered
// at import. That function reaches the account services that registered it.
#pragma once

struct AccountServices;

// Registers with the host's sign-in table, when the host has one.
void ListenToAccountChanges(const AccountServices& services);
// Forgets `services`, so that a later notice reaches nothing; for the application's destruction.
void StopListeningToAccountChanges(const AccountServices& services);

// The host says to which server the user is now signed in. Null does nothing; the empty text means
// nobody is signed in: the base address is emptied and the page hears "ev-user-sign-out".
// Otherwise, unless the host's tokens show the same account on the present and the new address,
// the new address becomes the base address, the service document is fetched again and the pages
// are reloaded.
void OnSignedInUserChanged(const AccountServices& services, const wchar_t* server);
