"""Layered products: one that is put together from a main record, sub records and perhaps an exact one (tavd/tavdidset.h)."""

from __future__ import annotations

import ctypes
from collections.abc import Iterator
from contextlib import contextmanager
from typing import Any

from tavd import _binding
from tavd._errors import Error
from tavd._wording import narrow_text

SEPARATORS = "-+"


def beginning(object_id: str) -> str:
    """What the ids of a product's records have in common, its first separator included; empty for an id without one."""
    places = [place for place in map(object_id.find, SEPARATORS) if place >= 0]
    return object_id[: min(places) + 1] if places else ""


@contextmanager
def put_together(db: int, class_id: str, object_id: str) -> Iterator[tuple[int | None, tuple[str, ...], bool]]:
    """The variant as one record, which is released at the end and never saved; the ids of its layers in the order in which
    they are asked; and whether there is a layered product at all. None: the id is none of it."""
    ids = _binding.record("IdSet")()
    _binding.function("tavdidset_init")(ids)
    rec = ctypes.c_void_p()
    try:
        if _binding.function("tavdidset_read")(ids, db, class_id.encode(), object_id.encode()) != 0:
            raise Error(f"{class_id} {beginning(object_id)}... has two main records, expected one")
        is_layered = bool(ids.mainId)
        layers: list[tuple[str, int]] = []
        if is_layered and _binding.function("tavdidset_adjust")(ids, db, object_id.encode()) == 0:
            layers = _asked(ids)
            rec.value = _binding.function("tavdsrv_newrec")(class_id.encode(), object_id.encode())
            for _, layer in reversed(layers):
                _put(db, layer, rec)
        yield rec.value, tuple(name for name, _ in layers), is_layered
    finally:
        _binding.function("tavbreleaserec")(rec.value)
        _binding.function("tavdidset_release")(ids)


def _asked(ids: Any) -> list[tuple[str, int]]:
    layers = [(narrow_text(ids.curId), ids.curRec)] if ids.curRec else []
    subs = ctypes.cast(ids.subs.data, ctypes.POINTER(_binding.record("IdSetItem")))
    for place in range(ids.subs.count):
        if subs[place].matches == b"\0":
            break  # they are sorted behind all others
        layers.append((narrow_text(subs[place].id), subs[place].rec))
    return layers + ([(narrow_text(ids.mainId), ids.mainRec)] if ids.mainRec else [])


def _put(db: int, layer: int, rec: ctypes.c_void_p) -> None:
    """Puts the attributes of a layer into the record, over those that are there."""
    number, data, length = ctypes.c_int16(), ctypes.c_void_p(), ctypes.c_int32()
    for place in range(_binding.function("tavdsrv_attributecount")(layer)):
        _binding.function("tavdsrv_attributeat")(
            layer, place, ctypes.byref(number), ctypes.byref(data), ctypes.byref(length)
        )
        _binding.function("tavbinsertatt")(db, ctypes.byref(rec), number.value, data, length.value)
