#include "desktop/harness/AnyDesktopTest.h"

#include "desktop/harness/Artifacts.h"

#include <iostream>

namespace quillmender::harness {

namespace {

QString folderOfThisTest() {
    const auto *test = testing::UnitTest::GetInstance()->current_test_info();
    QString name = QStringLiteral("%1.%2").arg(QString::fromUtf8(test->test_suite_name()),
                                               QString::fromUtf8(test->name()));
    // Of one with a parameter.
    name.replace(u'/', u'-');
    return artifactsFolder() + QLatin1Char('/') + name;
}

} // namespace

void AnyDesktopTest::SetUp() {
    setTimeoutObserver([this] { keepArtifacts(); });
}

void AnyDesktopTest::TearDown() {
    setTimeoutObserver({});
    if (HasFailure())
        keepArtifacts();
}

void AnyDesktopTest::keepArtifacts() {
    if (kept_ || startedDesktop() == nullptr)
        return;
    kept_ = true;
    startedDesktop()->keepArtifacts(folderOfThisTest());
    std::cout << "Kept: " << folderOfThisTest().toStdString() << std::endl;
}

} // namespace quillmender::harness
