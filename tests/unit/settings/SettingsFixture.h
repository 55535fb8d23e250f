#pragma once

#include "fakes/FakeLoginItem.h"
#include "fakes/FakeSecrets.h"
#include "fakes/FakeUserDefaults.h"
#include "settings/SettingsStore.h"
#include "support/RunTask.h"

#include <gtest/gtest.h>

namespace quillmender {

class SettingsFixture : public testing::Test {
  protected:
    SettingsStore &store() {
        if (!store_)
            store_ = std::make_unique<SettingsStore>(defaults, secrets, loginItem, keyPatience);
        return *store_;
    }

    LLMConfiguration snapshot() { return test::runTask(store().snapshot()); }

    /// The next `store()` is that of a new run of the program.
    void restart() { store_.reset(); }

    fakes::CallLog log = fakes::makeCallLog();
    fakes::FakeUserDefaults defaults;
    fakes::FakeSecrets secrets{log};
    fakes::FakeLoginItem loginItem{log};
    std::chrono::milliseconds keyPatience = std::chrono::seconds(20);

  private:
    std::unique_ptr<SettingsStore> store_;
};

} // namespace quillmender
