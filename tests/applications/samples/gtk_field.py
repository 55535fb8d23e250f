#!/usr/bin/env python3
"""A window with one text field of GTK. Usage: gtk_field.py 3|4 entry|text|password"""

import sys

import gi

version, kind = sys.argv[1:3]
gi.require_version("Gtk", version + ".0")
from gi.repository import Gtk  # noqa: E402


def make_field():
    if kind == "entry":
        return Gtk.Entry()
    if kind == "password":
        return Gtk.PasswordEntry() if version == "4" else Gtk.Entry(visibility=False)
    return Gtk.TextView()


def activate(application):
    window = Gtk.ApplicationWindow(application=application, title="Sample field")
    window.set_default_size(480, 240)
    field = make_field()
    if version == "4":
        window.set_child(field)
    else:
        window.add(field)
        window.show_all()
    window.present()
    field.grab_focus()


program = Gtk.Application()
program.connect("activate", activate)
program.run()
