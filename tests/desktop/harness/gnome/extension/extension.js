// What the tests see of a GNOME session that the shell tells no program.

import Gio from 'gi://Gio';
import GLib from 'gi://GLib';
import * as Main from 'resource:///org/gnome/shell/ui/main.js';
import {getInputSourceManager} from 'resource:///org/gnome/shell/ui/status/keyboard.js';
import {Extension} from 'resource:///org/gnome/shell/extensions/extension.js';

const description = `<node>
  <interface name="harness.Eyes">
    <method name="State"><arg type="s" direction="out"/></method>
    <method name="Activate"><arg type="u" direction="in"/></method>
    <method name="Close"><arg type="u" direction="in"/></method>
    <method name="UseLayout"><arg type="u" direction="in"/></method>
  </interface>
</node>`;

function windows() {
    return global.get_window_actors()
        .map(actor => actor.meta_window)
        .filter(window => !window.is_override_redirect())
        .sort((a, b) => a.get_stable_sequence() - b.get_stable_sequence());
}

function described(window) {
    const {x, y, width, height} = window.get_buffer_rect();
    return {
        id: window.get_stable_sequence(),
        pid: window.get_pid(),
        title: window.title ?? '',
        app: window.get_wm_class() ?? '',
        shown: !window.minimized && window.showing_on_its_workspace(),
        active: window.has_focus(),
        x, y, width, height,
    };
}

export default class Eyes extends Extension {
    enable() {
        this._object = Gio.DBusExportedObject.wrapJSObject(description, this);
        this._object.export(Gio.DBus.session, '/harness/Eyes');
    }

    disable() {
        this._object.unexport();
        this._object = null;
    }

    State() {
        return JSON.stringify({
            starting: Main.layoutManager._startingUp,
            overview: Main.overview.visible,
            display: GLib.getenv('DISPLAY') ?? '',
            authority: GLib.getenv('XAUTHORITY') ?? '',
            windows: windows().map(described),
        });
    }

    Activate(id) {
        windows().find(window => window.get_stable_sequence() === id)
            ?.activate(global.get_current_time());
    }

    Close(id) {
        windows().find(window => window.get_stable_sequence() === id)
            ?.delete(global.get_current_time());
    }

    UseLayout(index) {
        getInputSourceManager().inputSources[index].activate(false);
    }
}
