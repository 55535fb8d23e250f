#pragma once

#include "platform/linux/portal/TokenStore.h"

#include <optional>

namespace quillmender::portal {

/// The token in a file of its own that nobody else can read,
/// `$XDG_STATE_HOME/quillmender/portal-token` unless told otherwise. Where it cannot be written it
/// lasts as long as this.
class FileTokenStore : public TokenStore {
  public:
    explicit FileTokenStore(QString path = usualPath());

    QString token() override;
    void setToken(const QString &token) override;

    static QString usualPath();

  private:
    bool write() const;

    const QString path_;
    std::optional<QString> token_; ///< once it is known
};

} // namespace quillmender::portal
