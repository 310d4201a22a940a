// The page's account commands: loginIn offers the host's sign-in window, getUser tells who is
// signed in with the host's token, getUserJWT trades that token at the web service for the
// short-lived token the page needs. None reads its parameters.
#pragma once

#include "bridge/base_dispatcher.h"

class Brevan;

class LoginInDispatcher : public BaseDispatcher {
  public:
    explicit LoginInDispatcher(Brevan& app) : app_(app) {}
    Json::Value Run() override;

  private:
    Brevan& app_;
};

class GetUserDispatcher : public BaseDispatcher {
  public:
    explicit GetUserDispatcher(Brevan& app) : app_(app) {}
    Json::Value Run() override;

  private:
    Brevan& app_;
};

class GetUserJWTDispatcher : public BaseDispatcher {
  public:
    explicit GetUserJWTDispatcher(Brevan& app) : app_(app) {}
    Json::Value Run() override;

  private:
    Brevan& app_;
};
