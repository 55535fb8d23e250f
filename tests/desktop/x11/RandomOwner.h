#pragma once

#include "desktop/x11/ScriptedOwner.h"

#include <memory>
#include <random>

namespace quillmender::x11 {

/// What an application may offer as a selection and how it hands it over, made up from a seed:
/// up to a hundred targets, each of any size from nothing to megabytes, of any type and format, at
/// once or in increments, right away or after a while. Some lie, some die.
class RandomOwner {
  public:
    using Random = std::mt19937;

    enum class Character {
        /// Hands over everything in time.
        honest,
        /// The same, some of it refused or never answered.
        sparing,
        /// With targets that are answered by anything but an answer.
        lying,
        /// Is gone after some answers.
        dying,
    };

    RandomOwner(const QByteArray &display, Random &random, Character character);

    struct Offer {
        QByteArray target;
        X11Property property;
    };

    /// What can be had from it, in the order of its list.
    const QList<Offer> &offers() const { return offers_; }

    ScriptedOwner &owner() { return *owner_; }

  private:
    X11Property makeProperty();
    QByteArray makeName(int index);
    void offer(const Offer &offer);
    void addBadTarget(int index);
    int number(int least, int most);

    Random &random_;
    Character character_;
    std::unique_ptr<ScriptedOwner> owner_;
    QList<Offer> offers_;
};

} // namespace quillmender::x11
