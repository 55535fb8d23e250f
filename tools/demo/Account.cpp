#include "demo/Account.h"

#include <cstdio>

namespace quillmender::demo {

Account::Account() {
    sinceStart_.start();
    sinceStep_.start();
}

void Account::step(const QString &what) {
    constexpr double perMs = 1e6;
    std::printf("%2d  %8.1f ms  %s\n", ++count_,
                static_cast<double>(sinceStep_.nsecsElapsed()) / perMs, qUtf8Printable(what));
    std::fflush(stdout);
    sinceStep_.restart();
}

} // namespace quillmender::demo
