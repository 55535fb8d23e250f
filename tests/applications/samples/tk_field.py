#!/usr/bin/env python3
"""A window with one text field of Tk. Usage: tk_field.py entry|text|password"""

import sys
import tkinter

kind = sys.argv[1]
window = tkinter.Tk()
window.title("Sample field")
if kind == "text":
    field = tkinter.Text(window, width=60, height=12, undo=True)
else:
    field = tkinter.Entry(window, width=60, show="*" if kind == "password" else "")
field.pack()
field.focus_force()
window.mainloop()
