#include "model/Observable.h"

#include <gtest/gtest.h>

namespace quillmender {

namespace {

class Counter : public Observable {
  public:
    int value() const { return value_; }
    void setValue(int value) { publish(value_, value); }

  private:
    int value_ = 0;
};

TEST(ObservableTest, AnnouncesEachChangeBeforeItHappens) {
    Counter counter;
    std::vector<int> seen;
    QObject::connect(&counter, &Observable::objectWillChange,
                     [&] { seen.push_back(counter.value()); });
    counter.setValue(1);
    counter.setValue(1);
    counter.setValue(2);
    EXPECT_EQ(seen, (std::vector{0, 1, 1}));
    EXPECT_EQ(counter.value(), 2);
}

} // namespace

} // namespace quillmender
