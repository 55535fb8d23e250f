#pragma once

#include "platform/linux/FrontmostSource.h"
#include "platform/linux/atspi/AtspiElement.h"
#include "platform/linux/atspi/FocusFinder.h"
#include "platform/linux/atspi/FocusMemory.h"
#include "platform/linux/atspi/TextReader.h"
#include "platform/linux/atspi/TextSelector.h"
#include "platform/linux/atspi/TextWriter.h"

namespace quillmender::atspi {

/// The focused text through AT-SPI2. Follows the focus from the moment it is made.
///
/// A call to an application may take 250 ms and what one reading leads to 600 ms in all, plus the
/// time that a large text needs to travel. Where the user has edited the text since it was read, a
/// range is where the same words are now. Operations under way must not outlive the object.
class AtspiFocusedText : public FocusedText {
  public:
    /// Both must outlive the object.
    AtspiFocusedText(FrontmostSource &frontmost, AtspiBus &bus);

    QCoro::Task<FocusReading> read(RunningApplicationRef application) override;
    QCoro::Task<> prepare() override;
    QCoro::Task<std::optional<TextRange>> selectedRange(FocusedElementRef element) override;
    QCoro::Task<Replacement> replace(FocusedElementRef element, TextRange range,
                                     QString text) override;
    QCoro::Task<PasteTarget> select(FocusedElementRef element, TextRange range) override;

  private:
    using Reading = std::shared_ptr<FocusReading>;

    QCoro::Task<> readTerminal(Reading reading, std::optional<ElementTraits> found,
                               CallBudgetRef budget);
    QCoro::Task<> readText(Reading reading, TextElementRef element,
                           TextReader::AskedAheadRef ahead);
    QCoro::Task<std::optional<TextRange>> rangeOf(TextElementRef text,
                                                  TextReader::AskedAheadRef ahead);

    FrontmostSource &frontmost_;
    AtspiBus &bus_;
    BusApplications applications_{bus_};
    FocusMemory memory_{bus_, applications_};
    FocusFinder finder_{bus_, applications_, memory_};
    TextReader reader_{bus_};
    TextSelector selector_{bus_, reader_};
    TextWriter writer_{bus_, reader_};
};

} // namespace quillmender::atspi
