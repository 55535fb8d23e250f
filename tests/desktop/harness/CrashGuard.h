#pragma once

#include <QtGlobal>

class QString;

namespace quillmender::harness {

/// A small process that outlives this one for a moment: when this process ends in whatever way, it
/// kills the process groups and removes the folders that are still on its list.
class CrashGuard {
  public:
    static CrashGuard &instance();

    CrashGuard(const CrashGuard &) = delete;
    CrashGuard &operator=(const CrashGuard &) = delete;

    void watchGroup(qint64 processGroup);
    void forgetGroup(qint64 processGroup);
    void watchFolder(const QString &path);

  private:
    CrashGuard();
    ~CrashGuard();

    void tell(char verb, const QString &object);

    int pipe_ = -1;
};

} // namespace quillmender::harness
