#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>
#include <xkbcommon/xkbcommon.h>

namespace quillmender::harness {

/// The keys of a keyboard with one or several layouts, and what is held or locked on it.
class Keymap {
  public:
    /// A key and the level of it that has a symbol: 0 plain, 1 with Shift, 2 with AltGr, 3 with
    /// both.
    struct Stroke {
        xkb_keycode_t keyCode;
        xkb_level_index_t level;
    };

    struct Modifiers {
        quint32 depressed;
        quint32 latched;
        quint32 locked;
        quint32 group;
    };

    /// By the names of the layouts: "us", "de", "us,ru". Throws HarnessError for one that is
    /// unknown.
    explicit Keymap(const QString &layouts);

    /// As compositors want it.
    QByteArray text() const;

    /// Where the symbol is in a layout of the keyboard, counted from 0.
    std::optional<Stroke> find(xkb_keysym_t symbol, xkb_layout_index_t layout) const;

    void press(xkb_keycode_t key) { xkb_state_update_key(state_.get(), key, XKB_KEY_DOWN); }
    void release(xkb_keycode_t key) { xkb_state_update_key(state_.get(), key, XKB_KEY_UP); }
    void lockLayout(xkb_layout_index_t layout);

    Modifiers modifiers() const;
    bool isLocked(const char *modifier) const;
    xkb_layout_index_t layout() const;

  private:
    struct End {
        void operator()(xkb_context *object) const { xkb_context_unref(object); }
        void operator()(xkb_keymap *object) const { xkb_keymap_unref(object); }
        void operator()(xkb_state *object) const { xkb_state_unref(object); }
    };

    std::unique_ptr<xkb_context, End> context_;
    std::unique_ptr<xkb_keymap, End> keymap_;
    std::unique_ptr<xkb_state, End> state_;
};

} // namespace quillmender::harness
