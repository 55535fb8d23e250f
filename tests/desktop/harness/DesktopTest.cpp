#include "desktop/harness/DesktopTest.h"

#include <iostream>

namespace quillmender::harness {

namespace {

QString artifactsFolder() {
    const auto *test = testing::UnitTest::GetInstance()->current_test_info();
    const QString name = QStringLiteral("%1.%2").arg(QString::fromUtf8(test->test_suite_name()),
                                                     QString::fromUtf8(test->name()));
    const QString chosen = qEnvironmentVariable("QUILLMENDER_ARTIFACTS");
    return (chosen.isEmpty() ? QStringLiteral(QUILLMENDER_ARTIFACTS_DEFAULT) : chosen) +
           QLatin1Char('/') + name;
}

} // namespace

Desktop &DesktopTest::startDesktop(const Desktop::Options &options) {
    desktop_.reset();
    desktop_ = std::make_unique<Desktop>(options);
    return *desktop_;
}

Desktop &DesktopTest::desktop() {
    return desktop_ ? *desktop_ : startDesktop({});
}

void DesktopTest::SetUp() {
    setTimeoutObserver([this] { keepArtifacts(); });
}

void DesktopTest::TearDown() {
    setTimeoutObserver({});
    if (HasFailure())
        keepArtifacts();
}

void DesktopTest::keepArtifacts() {
    if (kept_ || !desktop_)
        return;
    kept_ = true;
    desktop_->keepArtifacts(artifactsFolder());
    std::cout << "Kept: " << artifactsFolder().toStdString() << std::endl;
}

} // namespace quillmender::harness
