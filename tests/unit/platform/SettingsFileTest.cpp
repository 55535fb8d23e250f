#include "platform/linux/services/SettingsFile.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <future>

namespace quillmender {
namespace {

const auto key = QStringLiteral("settings.openai.model");

class SettingsFileTest : public testing::Test {
  protected:
    // The toolkit looks for the folder once in a process.
    static QString folder() {
        static const QTemporaryDir temporary;
        return temporary.path();
    }
    static void SetUpTestSuite() { qputenv("XDG_CONFIG_HOME", folder().toUtf8()); }

    static QByteArray written() {
        QFile file(folder() + QStringLiteral("/quillmender/quillmender.conf"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

TEST_F(SettingsFileTest, WhatWasSetIsReadAtOnceAndWrittenInTheEnd) {
    {
        SettingsFile file;
        for (int i = 0; i <= 100; ++i) {
            file.setString(key, QStringLiteral("model %1").arg(i));
            EXPECT_EQ(file.string(key), QStringLiteral("model %1").arg(i));
        }
        file.setData(QStringLiteral("settings.customActions"), "[\"\xc3\xa9\"]");
        EXPECT_EQ(file.data(QStringLiteral("settings.customActions")), "[\"\xc3\xa9\"]");
    }
    EXPECT_TRUE(written().contains("settings.openai.model=model 100\n")) << written().toStdString();
    SettingsFile next;
    EXPECT_EQ(next.string(key), QStringLiteral("model 100"));
    EXPECT_EQ(next.data(QStringLiteral("settings.customActions")), "[\"\xc3\xa9\"]");
    EXPECT_EQ(next.string(QStringLiteral("settings.other")), std::nullopt);
}

TEST_F(SettingsFileTest, AnEmptyTextIsAValue) {
    {
        SettingsFile file;
        file.setString(key, QString());
    }
    EXPECT_EQ(SettingsFile().string(key), QString());
}

TEST(SerialWorkerTest, RunsInOrderWithoutWhatWasDropped) {
    std::promise<void> mayGoOn;
    std::promise<void> isDone;
    QList<int> ran;
    SerialWorker worker;
    worker.enqueue([&] { mayGoOn.get_future().wait(); });
    worker.enqueue([&] { ran.append(1); }, "a");
    worker.enqueue([&] { ran.append(2); }, "b");
    worker.enqueue([&] { ran.append(3); });
    worker.dropWaiting("a");
    worker.enqueue([&] { ran.append(4); }, "a");
    worker.enqueue([&] { isDone.set_value(); });
    mayGoOn.set_value();
    isDone.get_future().wait();
    EXPECT_EQ(ran, (QList<int>{2, 3, 4}));
}

} // namespace
} // namespace quillmender
