"""What is read of a product's record: all that calculations and drawings need, so that they ask the database no more."""

from __future__ import annotations

import ctypes
import threading
from functools import lru_cache
from typing import Any, NamedTuple

from tavd import _binding
from tavd._declarations import CONSTANTS
from tavd._wording import narrow_text, shown, terminated, wide_text

_TEXT_UNITS = 256  # UTF-16 units that a code or a description takes at most
_TITLE_CHARS = int(CONSTANTS["TAVDG_TITLE_CHARS"])

process_lock = threading.RLock()
"""Held while market area and language of the process are set and used."""


class Record(NamedTuple):
    """A product as it is stored. Everything is a value, so that it can be sent to other processes."""

    class_id: str
    id: str
    code: str
    description: str
    web_link: str
    duct: bytes  # a DuctSize
    flow: bytes  # a FlowData, as it was loaded
    shape: bytes  # a tavdn_shape
    has_shape: bool
    title: str  # as drawings have it, with the blanks that an id has at its end
    narrow_title: bytes
    wide_title: bytes  # UTF-16
    wide_form: bool | None  # of the flow diagram's title: whether it is wide; None: there is none
    layers: tuple[str, ...]  # ids of the records that it is put together from, those asked first in front


@lru_cache(maxsize=None)
def functions() -> Any:
    """The functions that read a record."""
    return _Functions()


class _Functions:
    def __init__(self) -> None:
        for name in (
            "tavbfindrec",
            "tavbnextrec",
            "tavbreleaserec",
            "tavbgetID",
            "tavbfindatt",
            "tavbcopyatt",
            "tavdsrv_lasterror",
            "tavdf_copyproductcode",
            "tavdf_copyproductcodew",
            "tavdf_copyproductdescw",
            "tavdf_copyweblinkw",
            "tavdf_load_ductsize",
            "tavdf_load_shapedata",
            "tavca_load_flowdata",
            "tavdn_read_shape",
        ):
            setattr(self, name, _binding.function(name))

    def __getattr__(self, name: str) -> Any:
        raise AttributeError(name)


def key_of(db: int, rec: int) -> tuple[str, str]:
    """Class and object id of a record at hand."""
    class_id, object_id = raw_key(db, rec)
    return narrow_text(class_id), narrow_text(object_id)


def raw_key(db: int, rec: int) -> tuple[bytes, bytes]:
    class_id = ctypes.create_string_buffer(8)
    object_id = ctypes.create_string_buffer(32)
    functions().tavbgetID(db, rec, class_id, object_id)
    return class_id.raw[:3].rstrip(b"\0"), object_id.raw[:30]


def product_text(db: int, rec: int, copy: Any) -> str:
    """A text of a product for the market and the language that the process has now."""
    buffer = (ctypes.c_uint16 * _TEXT_UNITS)()
    copy(db, rec, buffer, _TEXT_UNITS)
    return shown(bytes(buffer))


def wide_form(db: int) -> bool | None:
    """Whether flow diagrams of a database have wide titles; None: they have none, as it says of its texts what nobody knows."""
    texts = ctypes.c_int16(int(CONSTANTS["TAVD_TEXTS_DEFAULT"]))
    functions().tavbfindatt(
        db,
        str(CONSTANTS["TAVD_FILEHEADER_CLASS"]).encode(),
        str(CONSTANTS["TAVD_FILEHEADER_ID"]).encode(),
        CONSTANTS["TAVD_ATT_USES_UTF8"],
        None,
        ctypes.byref(texts),
        2,
    )
    if texts.value == CONSTANTS["TAVD_TEXTS_UTF8"]:
        return True
    return False if texts.value in (CONSTANTS["TAVD_TEXTS_DEFAULT"], CONSTANTS["TAVD_TEXTS_DEFAULT_2"]) else None


def sizing_mode(db: int, rec: int) -> int:
    """How a record takes part in a family or a layered product, TAVD_SIZING_; 0 if it says nothing."""
    mode = ctypes.c_int16()
    functions().tavbcopyatt(db, rec, CONSTANTS["TAVD_ATT_SIZING_MODE"], None, ctypes.byref(mode), 2)
    return mode.value


def filled_code(code: str, duct: bytes) -> str:
    """A product code with the duct's size in the place of its fields; as it is if it has none, or others than fit."""
    if "{" not in code:
        return code
    size = _binding.record("DuctSize").from_buffer_copy(duct)
    template = (code + "\0").encode("utf-16-le")
    units = (ctypes.c_uint16 * (len(template) // 2)).from_buffer_copy(template)
    filled = (ctypes.c_uint16 * _TEXT_UNITS)()
    result = _binding.function("tavd_build_code_dsw2")(filled, _TEXT_UNITS, units, size, _binding.record("DuctSize")())
    return shown(bytes(filled)) if result == CONSTANTS["TAVD_CODE_OK"] else code


def flow_data(db: int, rec: int) -> Any:
    flow = _binding.record("FlowData")()
    functions().tavca_load_flowdata(db, rec, flow)
    return flow


def duct_size(db: int, rec: int) -> Any:
    duct = _binding.record("DuctSize")()
    functions().tavdf_load_ductsize(db, rec, duct)
    return duct


def read(db: int, rec: int, layers: tuple[str, ...] = ()) -> Record:
    """All of a record; market and language are those that the process has now."""
    ask = functions()
    class_id, object_id = key_of(db, rec)
    shape = _binding.record("tavdn_shape")()
    ask.tavdn_read_shape(db, rec, shape)
    words = (ctypes.c_int16 * int(CONSTANTS["TAVDF_SHAPE_MIN_WORDS"]))()
    narrow = ctypes.create_string_buffer(_TITLE_CHARS)
    wide = (ctypes.c_uint16 * _TITLE_CHARS)()
    ask.tavdf_copyproductcode(db, rec, narrow, _TITLE_CHARS)
    ask.tavdf_copyproductcodew(db, rec, wide, _TITLE_CHARS)
    return Record(
        class_id=class_id,
        id=object_id,
        code=product_text(db, rec, ask.tavdf_copyproductcodew),
        description=product_text(db, rec, ask.tavdf_copyproductdescw),
        web_link=product_text(db, rec, ask.tavdf_copyweblinkw),
        duct=bytes(duct_size(db, rec)),
        flow=bytes(flow_data(db, rec)),
        shape=bytes(shape),
        has_shape=ask.tavdf_load_shapedata(db, rec, None, words, len(words)) > 0,
        title=wide_text(bytes(wide)),
        narrow_title=narrow.value,
        wide_title=terminated(bytes(wide)),
        wide_form=wide_form(db),
        layers=layers,
    )
