"""The three drawings of a product, with the settings of the program's commands diagram, throw and picture."""

from __future__ import annotations

import ctypes
import math
from collections.abc import Mapping
from typing import TYPE_CHECKING, Any

import numpy as np

from tavd import _binding
from tavd._declarations import CONSTANTS
from tavd._drawing import Drawing, Pen, count_strokes
from tavd._errors import Error
from tavd._placement import Plane
from tavd._points import DAMPERS, ROOM_DAMPING, prepare
from tavd._wording import printable

if TYPE_CHECKING:
    from tavd._product import Product

_EXTENT = int(CONSTANTS["TAVDG_EXTENT"])
_DIAGRAM = Plane(_EXTENT, _EXTENT, False)
_SKETCH = Plane(int(CONSTANTS["TAVDSHAPEPIC_WIDTH"]), int(CONSTANTS["TAVDSHAPEPIC_HEIGHT"]), True)
_TITLE_UNITS = int(CONSTANTS["TAVDG_TITLE_CHARS"]) - 1  # a longer title would not be drawn at all

_BLACK, _GREY, _RED, _BLUE = 0x000000, 0x808080, 0x0000FF, 0xFF0000
_THIN, _WIDE = _EXTENT // 1000, _EXTENT // 500
_POINT = Pen(_BLUE, _THIN, "Operating point")
_FLOW_PENS = (
    Pen(_BLACK, _THIN, "Axes"),
    Pen(_BLACK, _THIN, "Curves"),
    Pen(_GREY, _THIN, "Curves between"),
    Pen(_RED, _WIDE, "Sound levels"),
    Pen(_RED, 2 * _WIDE, "Flow limits"),
    _POINT,
)
_THROW_PENS = (Pen(_BLACK, _THIN, "Axes"), Pen(_RED, _WIDE, "Throw length"), _POINT)

# The place in a list is the unit's number.
_FLOWS = ("l/s", "l/h", "m3/s", "m3/h", "cfm")
_THROW_FLOWS = (*_FLOWS, "m3/h/m", "l/s/m")
_PRESSURES = ("Pa", "kPa", "inWC", "inwg")

_POSITION_LABEL = b"pos"  # in front of the first damper position
_LEVEL_LABEL = b"dB(A)"  # behind the first sound level
_MOST_LABELS = int(CONSTANTS["TAVDG_A_LABELS"])  # further ones would be dropped
_LONGEST_LABEL = int(CONSTANTS["TAVDG_LABEL_CHARS"]) - 1
_THROW_PARAMETER = str(CONSTANTS["L2DG_THROW_PARAMETER"])
_PARAMETER_CHARS = int(CONSTANTS["TAVD_PARAMETER_CHARS"])

# Room to the right of the plot for texts that stand there, in the units of the plane.
_CHARACTER = 190  # width of one
_RIGHT_MARGIN = 600  # that the chart leaves there
_MOST_ROOM = 4000


def flow_diagram(
    product: Product,
    qv: float | None,
    dp: float | None,
    limits: tuple[float, float] | None,
    levels: tuple[float, float, float] | None,
    labels: Mapping[float, str] | None,
    units: tuple[str, str],
    static: bool,
    title: str,
    size: tuple[int, int],
) -> Drawing:
    """Product.flow_diagram."""
    if dp is not None and qv is None:
        raise ValueError("dp is given without qv, expected both or qv alone")
    low, high = limits or (0.0, 0.0)
    lowest, highest, step = levels or (0.0, 0.0, 0.0)
    if levels is not None and not (0 < lowest <= highest and step > 0):
        raise ValueError(f"levels is {levels!r}, expected the lowest, the highest and their step, all above 0")
    texts = {float(position): _label(text) for position, text in (labels or {}).items()}
    if len(texts) > _MOST_LABELS:
        raise ValueError(f"labels has {len(texts)} texts, expected at most {_MOST_LABELS}")
    xunit, yunit = _unit("units", units[0], _FLOWS), _unit("units", units[1], _PRESSURES)
    flow = product.flow_data()
    if flow.nhdd != 0:
        _binding.function("tavca_check_end_reflection")(flow)
    prepared = prepare(flow, None)
    options = _binding.record("tavdn_flow_options")()
    options.size = ctypes.sizeof(options)
    options.qv, options.dp = qv or 0.0, dp or 0.0
    options.qvlimit1, options.qvlimit2 = low, high
    options.xunit, options.yunit, options.dptype = (
        xunit,
        yunit,
        CONSTANTS["TAVDG_DP_STATIC" if static else "TAVDG_DP_TOTAL"],
    )
    options.lpmin, options.lpmax, options.lpstep = lowest, highest, step
    options.roomdamp = ROOM_DAMPING
    options.LpA_label, options.damperpos_label = _LEVEL_LABEL, _POSITION_LABEL
    kept = (_binding.record("tavdn_position_label") * len(texts))(*texts.items())
    options.a_labels, options.na_labels = kept, len(texts)
    room = _room_at_right(flow, texts)
    if room != 0:
        options.rectangle.right, options.rectangle.bottom = _EXTENT - room, _EXTENT
    record = product.record
    draw_flow = _binding.function("tavdn_draw_flow")

    def draw(drawn_title: str, surface: int | None) -> int:
        own = type(options).from_buffer_copy(options)
        narrow, wide = _title(product, drawn_title, bool(title))
        if record.wide_form is False:
            own.title = narrow
        elif record.wide_form:
            own.titlew = wide
        return int(draw_flow(prepared.address, own, surface))

    drawn_title = _drawn_title(product, title)
    if draw(drawn_title, None) != 0:
        raise _undrawable(product)
    marked = _marked(product, qv, dp, draw, drawn_title) if qv else ""
    return Drawing(
        f"{_name(product, title)}: flow diagram",
        "Pressure over flow. " + _about(product) + marked,
        size,
        _DIAGRAM,
        _FLOW_PENS,
        drawn_title,
        draw,
    )


def throw_diagram(
    product: Product, qv: float | None, value: object, unit: str, title: str, size: tuple[int, int]
) -> Drawing:
    """Product.throw_diagram."""
    xunit = _unit("unit", unit, _THROW_FLOWS)
    flow = product.flow_data()
    text = str(value)
    _check_throw_line(product, flow, text, qv or 1.0)
    if text:
        _binding.function("tavca_param_setvalue")(flow, _THROW_PARAMETER.encode(), text.encode())
    prepared = prepare(flow, None)
    draw_throw = _binding.function("tavdn_draw_throw")

    def draw(drawn_title: str, surface: int | None) -> int:
        options = _binding.record("tavdn_throw_options")()
        options.size = ctypes.sizeof(options)
        options.title = _title(product, drawn_title, bool(title))[0]
        options.value = text.encode()
        options.qv = qv or 0.0
        options.xunit = xunit
        return int(draw_throw(prepared.address, options, surface))

    drawn_title = _drawn_title(product, title)
    if draw(drawn_title, None) != 0:
        raise _undrawable(product)
    line = f", line of the value {printable(text)}" if text else ""
    marked = _marked(product, qv, None, draw, drawn_title) if qv else ""
    return Drawing(
        f"{_name(product, title)}: throw length diagram",
        f"Throw length over flow{line}. " + _about(product) + marked,
        size,
        _DIAGRAM,
        _THROW_PENS,
        drawn_title,
        draw,
    )


def sketch(product: Product, title: str, size: tuple[int, int]) -> Drawing:
    """Product.sketch."""
    if not product.record.has_shape:
        raise Error(f"{product.class_id} {product.id} has no shape to draw")
    shape = _binding.record("tavdn_shape").from_buffer_copy(product.record.shape)
    draw_shape = _binding.function("tavdn_draw_shape")

    def draw(drawn_title: str, surface: int | None) -> int:
        options = _binding.record("tavdn_shape_options")()
        options.size = ctypes.sizeof(options)
        options.title = _title(product, drawn_title, bool(title))[0]
        return int(draw_shape(shape, options, surface))

    return Drawing(
        f"{_name(product, title)}: dimensions",
        "Dimensioned sketch. " + _about(product),
        size,
        _SKETCH,
        (),
        _drawn_title(product, title),
        draw,
    )


# ---- What settings come to


def _unit(name: str, unit: str, known: tuple[str, ...]) -> int:
    for number, one in enumerate(known):
        if one.lower() == str(unit).lower():
            return number
    raise ValueError(f"{name} has {unit!r}, expected one of {', '.join(known)}")


def _label(text: str) -> bytes:
    """A text as the chart's narrow texts have it: it reads its labels as formats. The characters of windows-1252 beyond
    Latin-1 are not offered, they differ from code page to code page."""
    shown = printable(text)
    if any(ord(character) > 0xFF for character in shown):
        raise ValueError(f"labels has {text!r}, expected characters of Latin-1")
    narrow = shown.encode("latin-1").replace(b"%", b"%%")
    if len(narrow) > _LONGEST_LABEL:
        raise ValueError(
            f"labels has a text of {len(narrow)} characters (a percent sign counts twice), expected at most {_LONGEST_LABEL}"
        )
    return narrow


def _room_at_right(flow: Any, texts: Mapping[float, bytes]) -> int:
    characters = 0
    if flow.kind == CONSTANTS["TAVD_KIND_RANGE"] and flow.nlw != 0:
        characters = len(b"40 " + _LEVEL_LABEL)
    if flow.kind in DAMPERS:
        characters = max([characters, *map(len, texts.values())])
    return max(0, min(_MOST_ROOM, characters * _CHARACTER - _RIGHT_MARGIN))


def _check_throw_line(product: Product, flow: Any, value: str, qv: float) -> None:
    key = f"{product.class_id} {product.id}"
    if flow.nparL2 == 0 and flow.nqvL2 == 0:
        raise _undrawable(product) if flow.nhdd == 0 else Error(f"{key} has no throw data to draw")
    if not value:
        return
    if len(value.encode()) > _PARAMETER_CHARS:
        raise ValueError(f"value is {value!r}, expected at most {_PARAMETER_CHARS} characters")
    if flow.nparL2 == 0:
        raise ValueError(f"value is {value!r}, but {key} has one throw line for all values")
    if _binding.function("tavca_L2_isothermal")(flow, qv, value.encode()) == 0:
        known = dict.fromkeys(row.value.decode("utf-8", "replace").rstrip(" ") for row in flow.parL2[: flow.nparL2])
        raise ValueError(f"value is {value!r}, but the throw lines of {key} are for {', '.join(known)}")


def _drawn_title(product: Product, title: str) -> str:
    units = len(title.encode("utf-16-le")) // 2
    if units > _TITLE_UNITS:
        raise ValueError(f"title is {units} characters long, expected at most {_TITLE_UNITS}")
    return printable(title) if title else product.record.title


def _title(product: Product, drawn: str, is_own: bool) -> tuple[bytes, Any]:
    """A title in the two forms that charts take: that of the record as it was read, or one made anew."""
    record = product.record
    if not is_own and drawn in (record.title, ""):
        narrow, wide = record.narrow_title, record.wide_title
    else:
        shown = printable(drawn)
        narrow = shown.encode("windows-1252", "replace")[:_TITLE_UNITS]
        wide = shown.encode("utf-16-le")[: 2 * _TITLE_UNITS]
    units = (ctypes.c_uint16 * (_TITLE_UNITS + 1))()
    ctypes.memmove(units, wide, len(wide))
    return narrow, units


# ---- What a drawing shows, in words


def _name(product: Product, title: str) -> str:
    return printable(title) or product.record.code or product.id


def brief(value: float) -> str:
    """A number in three or four significant digits, without trailing zeros behind the point."""
    number = float(np.float32(value))
    if not math.isfinite(number):
        return "-"
    size = abs(number)
    text = f"{number:.{0 if size >= 100 else 1 if size >= 10 else 2 if size >= 1 else 3}f}"
    if not text.strip("-0."):
        text = text.lstrip("-")  # a value that rounds to nothing has no sign
    return text.rstrip("0").rstrip(".") if "." in text else text


def _about(product: Product) -> str:
    text = f"{product.description}, " if product.description else ""
    text += f"class {product.class_id}, id {product.id}: {product.kind_name}"
    if str(product.duct):
        text += f", size {product.duct} mm"
    if product.has_flow_data:
        unit = "m/s" if product.by_velocity else "l/s"
        text += f", {brief(product.qv_min)} - {brief(product.qv_max)} {unit}, {brief(product.dp_min)} - {brief(product.dp_max)} Pa, total"
    return text + "."


def _marked(product: Product, qv: float | None, dp: float | None, draw: Any, title: str) -> str:
    """What of the point is in the picture, and no more: counted in the drawing itself."""
    lines, ellipses = count_strokes(draw, title, _DIAGRAM, _POINT)
    if qv is None or (lines == 0 and ellipses == 0):
        return ""
    unit = "m/s" if product.by_velocity else "l/s"
    return f" Marked: {brief(qv)} {unit}" + (f" and {brief(dp)} Pa." if ellipses and dp else ".")


def _undrawable(product: Product) -> Error:
    key = f"{product.class_id} {product.id}"
    if not product.has_flow_data:
        return Error(f"{key} has no flow data to draw")
    unit = "m/s" if product.by_velocity else "l/s"
    return Error(
        f"{key} has limits that make no diagram: {brief(product.qv_min)} - {brief(product.qv_max)} {unit}, "
        f"{brief(product.dp_min)} - {brief(product.dp_max)} Pa; expected rising limits above 0"
    )
