#pragma once

#include "doubles/CallLog.h"
#include "doubles/LiveObjects.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillmender {

/// The base of every test on the doubles. Starts with an empty log and no objects; fails when,
/// with all members of the derived test gone, a framework object was not released exactly.
class DoublesTest : public testing::Test {
  public:
    DoublesTest(const DoublesTest &) = delete;
    DoublesTest &operator=(const DoublesTest &) = delete;

  protected:
    DoublesTest() {
        doubles::CallLog::shared().clear();
        doubles::LiveObjects::shared().clear();
    }
    ~DoublesTest() override {
        EXPECT_EQ(doubles::LiveObjects::shared().uneven(), "") << "leaked or over-released";
    }

    /// What the system was asked to do since the last time.
    static std::vector<std::string> calls() { return doubles::CallLog::shared().take(); }
};

} // namespace quillmender
