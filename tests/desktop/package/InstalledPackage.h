#pragma once

namespace quillmender {

/// The package, installed on this machine; constructed means installed. It is purged when this
/// object goes away.
class InstalledPackage {
  public:
    /// Throws HarnessError when it cannot be installed.
    InstalledPackage();
    InstalledPackage(const InstalledPackage &) = delete;
    InstalledPackage &operator=(const InstalledPackage &) = delete;
    ~InstalledPackage();

    /// Throws HarnessError when it cannot be purged.
    void purge();

    /// Whether this machine has a package of that name already, from wherever.
    static bool isThere();

  private:
    bool isInstalled_ = false;
};

} // namespace quillmender
