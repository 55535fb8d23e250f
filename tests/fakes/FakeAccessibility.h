#pragma once

#include "fakes/CallLog.h"
#include "fakes/Gate.h"
#include "platform/Accessibility.h"

#include <QMap>

namespace quillmender::fakes {

/// An element of one application; of any when that is null.
struct FakeElement : AccessibilityElement {
    bool isOf(const RunningApplicationRef &other) const override {
        return !application || application == other;
    }

    RunningApplicationRef application;
};

/// One focused element with settable attributes.
class FakeAccessibility : public Accessibility {
  public:
    explicit FakeAccessibility(CallLog log) : log_(std::move(log)) {}

    bool isProcessTrusted() override {
        log_->append(QStringLiteral("isProcessTrusted"));
        return trusted;
    }
    bool isProcessTrustedWithPrompt() override {
        log_->append(QStringLiteral("isProcessTrustedWithPrompt"));
        trusted = trusted || grantsOnPrompt;
        return trusted;
    }
    AccessibilityElementRef createSystemWide() override {
        log_->append(QStringLiteral("createSystemWide"));
        return systemWide_;
    }
    ChordContextRef chordContext(const AccessibilityElementRef &) override { return context; }
    QCoro::Task<AttributeResult> copyAttributeValue(AccessibilityElementRef asked,
                                                    QString attribute) override {
        log_->append(QStringLiteral("copy ") + attribute);
        if (gate)
            co_await *gate;
        if (asked == systemWide_) {
            if (!hasFocusedElement)
                co_return AttributeResult{AccessibilityError::noValue, {}};
            co_return AttributeResult{errorBeside(attribute), AccessibilityElementRef(element)};
        }
        const auto found = attributes.find(attribute);
        if (found == attributes.end())
            co_return AttributeResult{AccessibilityError::noValue, {}};
        co_return AttributeResult{errorBeside(attribute), *found};
    }
    QCoro::Task<AccessibilityError> setAttributeValue(AccessibilityElementRef, QString attribute,
                                                      AccessibilityValue value) override {
        QString shown = QStringLiteral("?");
        if (const auto *text = std::get_if<QString>(&value))
            shown = *text;
        else if (const auto *range = std::get_if<TextRange>(&value))
            shown = QStringLiteral("%1+%2").arg(range->location).arg(range->length);
        log_->append(QStringLiteral("set %1 %2").arg(attribute, shown));
        if (refusedAttributes.contains(attribute))
            co_return refusal;
        attributes[attribute] = value;
        co_return AccessibilityError::success;
    }
    QCoro::Task<PasteTarget> selectBeforePaste(AccessibilityElementRef, TextRange range) override {
        log_->append(
            QStringLiteral("selectBeforePaste %1+%2").arg(range.location).arg(range.length));
        co_return std::as_const(pasteTarget);
    }

    bool trusted = true;
    bool grantsOnPrompt = false;
    bool hasFocusedElement = true;
    QMap<QString, AccessibilityValue> attributes;
    QStringList refusedAttributes;
    AccessibilityError refusal = AccessibilityError::failure;
    PasteTarget pasteTarget = PasteTarget::selected;
    ChordContextRef context;
    Gate *gate = nullptr; ///< that every reading waits at
    std::shared_ptr<FakeElement> element = std::make_shared<FakeElement>();
    QMap<QString, AccessibilityError> errorsBeside; ///< reported although there is a value

  private:
    AccessibilityError errorBeside(const QString &attribute) const {
        return errorsBeside.value(attribute, AccessibilityError::success);
    }

    CallLog log_;
    AccessibilityElementRef systemWide_ = std::make_shared<const AccessibilityElement>();
};

} // namespace quillmender::fakes
