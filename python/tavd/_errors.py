"""What goes wrong, in words."""

from __future__ import annotations


class Error(Exception):
    """A database that cannot be read, a product that cannot be drawn, libraries that cannot be found."""


class NotFoundError(Error, KeyError):
    """No such class or product in a database."""

    def __str__(self) -> str:
        return Exception.__str__(self)  # a KeyError would show its text between quotes


Error.__module__ = NotFoundError.__module__ = "tavd"  # as they are told
