// The gate every ribbon command passes first: the welcome step, then sign-in. A signed-out user
// meets the welcome dialog at each command, a signed-in user at most once; either way the command
// goes on only for a user who is signed in at the end.
#pragma once

#include <ctime>
#include <functional>
#include <memory>

#include "account/sign_in_table.h"

class BrevanConfig;
class PlatformServices;

// What the gate uses of the plug-in.
struct SignInGateServices {
    HostApi& host;
    // The welcome and info dialogs.
    PlatformServices& platform;
    // The account server's address; null while the plug-in is not initialised.
    const std::unique_ptr<BrevanConfig>& config;
    // The host's sign-in table found at import, if any.
    std::function<SignInTable()> signInTable;
};

class SignInGate {
  public:
    // Answers of the welcome step.
    static constexpr int kSignIn = 0;
    static constexpr int kSignUp = 1;
    static constexpr int kCancel = 2;
    static constexpr int kNothingShown = 3;

    using Clock = std::function<std::time_t()>;

    explicit SignInGate(
        const SignInGateServices& services, Clock now = [] { return std::time(nullptr); });

    // Runs the welcome step and the sign-in; true when the command may go on.
    bool Pass();

    // Shows the welcome dialog (`welcomeStep`) or the info dialog when it is due and gives the
    // user's answer, or kNothingShown. The welcome step is due for a signed-out user always, for
    // a signed-in one while the preference "welcome" is empty. The info step is due once no
    // welcome has been recorded and, with `minDays` of 1 or more, that many whole days after it
    // last showed. The time of a shown dialog is stored under "welcome" or "lastTime".
    int ShowWelcome(bool welcomeStep, int minDays);

  private:
    bool IsSignedIn() const;
    // Shows the host's sign-in window; true when the user is signed in afterwards.
    bool SignIn(bool signedIn) const;

    const SignInGateServices& services_;
    Clock now_;
};
