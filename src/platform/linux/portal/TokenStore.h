#pragma once

#include <QString>

namespace quillmender::portal {

/// Where the word is kept by which a portal knows next time that the user has agreed. Each use
/// gives a new one. It lets nobody but this program in, and is none of the user's secrets.
class TokenStore {
  public:
    TokenStore() = default;
    TokenStore(const TokenStore &) = delete;
    TokenStore &operator=(const TokenStore &) = delete;
    virtual ~TokenStore() = default;

    /// Empty when there is none.
    virtual QString token() = 0;

    /// Takes the place of the one before; empty to have none.
    virtual void setToken(const QString &token) = 0;
};

} // namespace quillmender::portal
