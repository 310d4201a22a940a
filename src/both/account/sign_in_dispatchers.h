// The page's account commands: loginIn offers the host's sign-in window, getUser tells who is
// signed in with the host's token, getUserJWT trades that token at the web service for the
// short-lived token the page needs. None reads its parameters.
#pragma once

#include "bridge/base_dispatcher.h"

struct AccountServices;

class LoginInDispatcher : public BaseDispatcher {
  public:
    explicit LoginInDispatcher(const AccountServices& services) : services_(services) {}
    Json::Value Run() override;

  private:
    const AccountServices& services_;
};

class GetUserDispatcher : public BaseDispatcher {
  public:
    explicit GetUserDispatcher(const AccountServices& services) : services_(services) {}
    Json::Value Run() override;

  private:
    const AccountServices& services_;
};

class GetUserJWTDispatcher : public BaseDispatcher {
  public:
    explicit GetUserJWTDispatcher(const AccountServices& services) : services_(services) {}
    Json::Value Run() override;

  private:
    const AccountServices& services_;
};
