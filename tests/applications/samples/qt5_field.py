#!/usr/bin/env python3
"""A window with one text field of Qt 5. Usage: qt5_field.py entry|text|password|page"""

import sys

from PyQt5.QtCore import QCoreApplication, Qt
from PyQt5.QtWidgets import QApplication, QLineEdit, QPlainTextEdit, QVBoxLayout, QWidget

kind = sys.argv[1]


def make_field():
    if kind == "text":
        return QPlainTextEdit()
    field = QLineEdit()
    if kind == "password":
        field.setEchoMode(QLineEdit.Password)
    return field


def make_page():
    from PyQt5.QtWebEngineWidgets import QWebEngineView

    page = QWebEngineView()
    page.setHtml("<textarea autofocus rows=8 cols=60></textarea>")
    return page


if kind == "page":
    QCoreApplication.setAttribute(Qt.AA_ShareOpenGLContexts)
    from PyQt5 import QtWebEngineWidgets  # noqa: F401
program = QApplication(sys.argv)
window = QWidget()
window.setWindowTitle("Sample field")
content = make_page() if kind == "page" else make_field()
QVBoxLayout(window).addWidget(content)
window.resize(640, 320)
window.show()
content.setFocus()
sys.exit(program.exec())
