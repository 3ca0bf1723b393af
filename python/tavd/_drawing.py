"""Drawings of a product as pictures."""

from __future__ import annotations

import ctypes
import os
from collections.abc import Callable
from functools import cached_property, lru_cache
from typing import Any, NamedTuple

from tavd import _binding
from tavd._declarations import CONSTANTS
from tavd._errors import Error
from tavd._placement import Area, Covered, Plane, fitted_place, fitting_title, natural_place

_ENDINGS = (".svg", ".png", ".pdf")
_REASON_BYTES = 300
_PIXELS_AN_INCH = 96  # as pages on the web count them
_MM_AN_INCH = 25.4
_SIDES = (64, 16384)  # pixels: smallest and largest side of a picture


class Pen(NamedTuple):
    """A pen of a drawing and what is drawn with it. Pens of one look stand in the order in which they draw."""

    colour: int  # 0x00BBGGRR
    width: int  # in the units of the plane
    name: str


Draw = Callable[[str, "int | None"], int]
"""Draws with a title on a surface (None: on none), and answers a code of tavdn_draw_flow."""


class Drawing:
    """A drawing. In a notebook it shows itself as SVG; str(drawing) says what it shows.

    >>> drawing = db["DMP", "QZDA-160"].flow_diagram(qv=50, dp=60)
    >>> drawing.title
    'QZDA-160: flow diagram'
    >>> drawing.save("/tmp/damper.svg")
    """

    def __init__(
        self,
        title: str,
        description: str,
        size: tuple[int, int],
        plane: Plane,
        pens: tuple[Pen, ...],
        drawn_title: str,
        draw: Draw,
    ) -> None:
        width, height = _checked(size)
        self.title = title
        """What it is, one line."""
        self.description = description
        """What it shows, in words, for those who cannot see it."""
        self.size = (width, height)
        """Width and height, pixels."""
        self._plane = plane
        self._pens = pens
        self._drawn_title = drawn_title
        self._draw = draw

    @cached_property
    def svg(self) -> str:
        """The picture as SVG."""
        return self._picture(".svg").decode()

    @cached_property
    def png(self) -> bytes:
        """The picture as PNG."""
        return self._picture(".png")

    @cached_property
    def pdf(self) -> bytes:
        """The picture as a PDF of one page of its size, 96 pixels an inch."""
        return self._picture(".pdf")

    def save(self, path: str | os.PathLike[str]) -> None:
        """Writes a file; its name ends in .svg, .png or .pdf, which says what it becomes.

        Raises ValueError for another ending. The file appears whole or not at all.
        """
        name = os.fspath(path)
        ending = os.path.splitext(name)[1].lower()
        if ending not in _ENDINGS:
            raise ValueError(f"{name!r} ends in {ending!r}, expected {', '.join(_ENDINGS[:-1])} or {_ENDINGS[-1]}")
        data = self.svg.encode() if ending == ".svg" else self.png if ending == ".png" else self.pdf
        draft = f"{name}.{os.getpid()}.new"
        try:
            with open(draft, "xb") as file:
                file.write(data)
            os.replace(draft, name)
        except BaseException:
            if os.path.exists(draft):
                os.unlink(draft)
            raise

    def operations(self) -> str:
        """The list of drawing operations in the drawing's own units, one a line: docs/recording.md."""
        gui = _functions()
        surface = gui.tgui_recording_create(self._plane.width, self._plane.height)
        try:
            self._draw_on(surface, self._drawn_title)
            return str(gui.tgui_recording_text(surface).decode())
        finally:
            gui.tgui_surface_destroy(surface)

    def _repr_svg_(self) -> str:
        return self.svg

    def __str__(self) -> str:
        return f"{self.title}\n{self.description}"

    def __repr__(self) -> str:
        return f"<tavd.Drawing {self.title}, {self.size[0]}x{self.size[1]} pixels>"

    # ---- How it is made

    def _picture(self, ending: str) -> bytes:
        gui = _functions()
        width, height = self.size
        room = Area(0, 0, width, height)
        title = self._fitting_title(room)
        surface = _surface(ending, width, height)
        try:
            gui.tgui_cairo_describe(surface, self.title.encode(), self.description.encode())
            for pen in self._pens:
                gui.tgui_cairo_name_pen(surface, pen.colour, pen.width, pen.name.encode())
            self._place(surface, title, fitted_place(self._plane, room, lambda place: self._covered(title, place)))
        except BaseException:
            gui.tgui_surface_destroy(surface)
            raise
        return _finished(surface)

    def _fitting_title(self, room: Area) -> str:
        """What of the title lies between the left and the right edge, without the blanks that an id has behind it."""
        place = natural_place(self._plane, room)

        def fits(title: str) -> bool:
            drawn = self._covered(title, place)
            return (
                drawn is None
                or drawn.title is None
                or (drawn.title.left >= room.left and drawn.title.right <= room.right)
            )

        return fitting_title(self._drawn_title.rstrip(" "), fits)

    def _covered(self, title: str, place: Area) -> Covered | None:
        gui = _functions()
        surface = gui.tgui_cairo_measure(1, 1)
        try:
            self._place(surface, title, place)
            box = _binding.record("tgui_box")()
            if gui.tgui_cairo_extent(surface, box) != 0:
                return None
            all_of_it = Area(box.left, box.top, box.right, box.bottom)
            if gui.tgui_cairo_text_extent(surface, 0, box) != 0:
                return Covered(all_of_it, None)
            return Covered(all_of_it, Area(box.left, box.top, box.right, box.bottom))
        finally:
            gui.tgui_surface_destroy(surface)

    def _place(self, surface: int, title: str, place: Area) -> None:
        """Draws with the plane at a place of the surface."""
        gui = _functions()
        saved = gui.tgui_save(surface)
        gui.tgui_set_map_mode(surface, CONSTANTS["TGUI_MM_ANISOTROPIC"])
        gui.tgui_set_window_ext(surface, self._plane.width, self._plane.height)
        gui.tgui_set_viewport_org(surface, int(place.left), int(place.top))
        gui.tgui_set_viewport_ext(surface, int(place.width), int(place.height))
        gui.tgui_set_background_mode(surface, CONSTANTS["TGUI_TRANSPARENT"])
        self._draw_on(surface, title)
        gui.tgui_restore(surface, saved)

    def _draw_on(self, surface: int, title: str) -> None:
        code = self._draw(title, surface)
        if code == CONSTANTS["TAVDN_NO_MEMORY"]:
            raise MemoryError("a drawing")
        if code != 0:
            raise Error(f"{self.title}: not drawn")


def count_strokes(draw: Draw, title: str, plane: Plane, pen: Pen) -> tuple[int, int]:
    """How many lines and ellipses of a drawing a pen of this look draws."""
    gui = _functions()
    surface = gui.tgui_recording_create(plane.width, plane.height)
    try:
        draw(title, surface)
        operations = gui.tgui_recording_text(surface).decode()
    finally:
        gui.tgui_surface_destroy(surface)
    red, green, blue = pen.colour & 0xFF, pen.colour >> 8 & 0xFF, pen.colour >> 16
    look = f"select pen solid width={pen.width} colour=#{red:02X}{green:02X}{blue:02X}"
    is_selected = False
    lines = ellipses = 0
    for operation in operations.splitlines():
        if operation.startswith("select pen ") or (
            operation.startswith("select stock ") and operation.endswith("-pen")
        ):
            is_selected = operation == look
        elif is_selected:
            lines += operation.startswith("line ")
            ellipses += operation.startswith("ellipse ")
    return lines, ellipses


def _checked(size: tuple[int, int]) -> tuple[int, int]:
    try:
        width, height = (int(side) for side in size)
    except (TypeError, ValueError):
        raise ValueError(f"size is {size!r}, expected a width and a height in pixels such as (1200, 900)") from None
    if min(width, height) < _SIDES[0] or max(width, height) > _SIDES[1]:
        raise ValueError(f"size is {size!r}, expected sides from {_SIDES[0]} to {_SIDES[1]} pixels")
    return width, height


def _surface(ending: str, width: int, height: int) -> int:
    gui = _functions()
    # The path is not written to: the bytes are fetched.
    if ending == ".svg":
        surface = gui.tgui_cairo_svg(b"-", width, height)
    elif ending == ".png":
        surface = gui.tgui_cairo_png(b"-", width, height)
    else:
        inch = _MM_AN_INCH / _PIXELS_AN_INCH
        surface = gui.tgui_cairo_pdf(b"-", width, height, width * inch, height * inch)
    if not surface:
        raise MemoryError(f"no picture of {width} by {height} pixels could be made")
    return int(surface)


def _finished(surface: int) -> bytes:
    """The bytes of a picture, whose surface ends here."""
    kept: list[bytes] = []

    def keep(_context: Any, data: int, length: int) -> int:
        kept.append(ctypes.string_at(data, length))
        return 0

    reason = ctypes.create_string_buffer(_REASON_BYTES)
    writer = _binding.callback("tgui_cairo_writer")(keep)
    if _functions().tgui_cairo_finish_into(surface, writer, None, reason, _REASON_BYTES) != 0:
        raise Error(f"the picture could not be completed: {reason.value.decode('utf-8', 'replace')}")
    return b"".join(kept)


@lru_cache(maxsize=None)
def _functions() -> Any:
    return _Functions()


class _Functions:
    """Those of libtavdgui and libtavdcairo, each found once."""

    def __getattr__(self, name: str) -> Any:
        found = _binding.function(name)
        setattr(self, name, found)
        return found
