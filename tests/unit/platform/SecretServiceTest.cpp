#include "platform/linux/services/SecretServiceSecrets.h"

#include "fakes/LogLines.h"

#include <QCoroTask>
#include <gtest/gtest.h>

namespace quillmender {
namespace {

const QString service = QStringLiteral("a service");
const QString account = QStringLiteral("an account");
const QString missing = QStringLiteral("quillmender-has-none");

TEST(SecretServiceTest, WithoutItsLibraryTheStoreIsUnavailable) {
    SecretServiceSecrets secrets(std::chrono::seconds(3), missing);
    const SecretSearch search = QCoro::waitFor(secrets.find(service, account));
    EXPECT_EQ(search.outcome, SecretOutcome::unavailable);
    EXPECT_TRUE(search.reason.contains(missing)) << search.reason.toStdString();
}

TEST(SecretServiceTest, WithoutItsLibraryChangesAreInTheLogOnce) {
    const fakes::LogLines lines("quillmender.secrets");
    {
        SecretServiceSecrets secrets(std::chrono::seconds(3), missing);
        secrets.store(service, account, "Kq7-a-secret");
        secrets.remove(service, QStringLiteral("another"));
    }
    EXPECT_TRUE(lines.contain(QStringLiteral("storing a secret failed")));
    EXPECT_FALSE(lines.contain(QStringLiteral("deleting a secret failed")));
    EXPECT_FALSE(lines.contain(QStringLiteral("Kq7")));
}

} // namespace
} // namespace quillmender
