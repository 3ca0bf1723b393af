"""Texts on their way from the C functions: what is shown of a record."""

from __future__ import annotations

_CONTROLS = {code: " " for code in (*range(0x20), *range(0x7F, 0xA0), 0x2028, 0x2029)}


def printable(text: str) -> str:
    """The text with a blank for each control character."""
    return text.translate(_CONTROLS)


def terminated(units: bytes) -> bytes:
    """UTF-16 up to its terminator."""
    end = 0
    while end + 1 < len(units) and units[end : end + 2] != b"\0\0":
        end += 2
    return units[:end]


def wide_text(units: bytes) -> str:
    """UTF-16 up to its terminator; U+FFFD for half a surrogate pair."""
    return terminated(units).decode("utf-16-le", "replace")


def shown(units: bytes) -> str:
    """The same as it is shown, without blanks at its end."""
    return printable(wide_text(units).rstrip(" "))


def narrow_text(text: bytes) -> str:
    """An id, or another narrow text that may hold anything."""
    return printable(text.split(b"\0", 1)[0].decode("utf-8", "replace").rstrip(" "))
