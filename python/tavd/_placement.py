"""Where in a picture a drawing is placed so that nothing of it is cut, and how much of its title fits: as the program tavd
places them, so that both make the same pictures."""

from __future__ import annotations

import math
from collections.abc import Callable
from typing import NamedTuple

from tavd._wording import printable

_EDGE = 1.0  # pixels that stay white along the edges: shades of letters and lines
_MARGIN_PART = 100  # of the smaller side stays white where a drawing has to be moved
_SMALLEST_SCALE = 0.5  # a drawing that would shrink by more stays where it is: something lies far outside
_MOST_TRIES = 20  # letters do not become narrower with a diagram: each try comes nearer
# A diagram's letters are as high as it is, the room for its numbers as wide: narrower than this, width to height, a number
# of four figures stands on the axis title.
_NARROWEST = 1.2


class Area(NamedTuple):
    """A rectangle, pixels."""

    left: float
    top: float
    right: float
    bottom: float

    @property
    def width(self) -> float:
        return self.right - self.left

    @property
    def height(self) -> float:
        return self.bottom - self.top


class Plane(NamedTuple):
    """The logical units that a drawing is made in."""

    width: int
    height: int
    keeps_proportions: bool  # as high as the picture, and in the middle of it


class Covered(NamedTuple):
    """What a drawing covers: lines with their widths, figures, cells of texts; and the cell of its title, if it has texts."""

    all: Area
    title: Area | None


Measure = Callable[[Area], "Covered | None"]
"""What a drawing covers with its plane at a place; None if it is empty."""


def natural_place(plane: Plane, room: Area) -> Area:
    """Over the whole room, or as high as that in its middle."""
    if not plane.keeps_proportions:
        return room
    width = math.floor(room.height * (plane.width / plane.height) + 0.5)
    left = room.left + room.width // 2 - width // 2
    return Area(left, room.top, left + width, room.bottom)


def fitted_place(plane: Plane, room: Area, measure: Measure) -> Area:
    """The natural place where a diagram is not too narrow for its letters and all of it lies in the room; else moved, and
    narrower or lower as far as it has to be."""
    natural = _legible(plane, room)
    drawn = measure(natural)
    if drawn is None or _holds(_inside(room, _EDGE), drawn.all):
        return natural
    # Whole pixels to move by, so that a margin of two always leaves the edge free.
    free = _inside(room, max(_EDGE + 1, min(room.width, room.height) / _MARGIN_PART))
    # A sketch is as high as the picture, and may be wider than that.
    first = min(1.0, room.width / natural.width)
    x = y = first
    for _ in range(_MOST_TRIES):
        if min(x, y) < first * _SMALLEST_SCALE:
            break
        place = _legible(plane, _shrunk(room, x, y))
        drawn = measure(place)
        assert drawn is not None
        # A pixel less, since places are whole pixels.
        over_x, over_y = drawn.all.width / (free.width - 1), drawn.all.height / (free.height - 1)
        if over_x <= 1 and over_y <= 1:
            dx = _shift(drawn.all.left, drawn.all.right, free.left, free.right)
            dy = _shift(drawn.all.top, drawn.all.bottom, free.top, free.bottom)
            return Area(place.left + dx, place.top + dy, place.right + dx, place.bottom + dy)
        if plane.keeps_proportions:
            over_x = over_y = max(over_x, over_y)
        x /= max(over_x, 1.0)
        y /= max(over_y, 1.0)
    return natural


def fitting_title(title: str, fits: Callable[[str], bool]) -> str:
    """The title, with "..." in the place of what is too much; at least one character of it, however narrow the room is."""
    if not title or fits(title):
        return title
    most, too_many = 1, len(title.encode("utf-16-le")) // 2
    while too_many - most > 1:
        middle = (most + too_many) // 2
        if fits(_shortened(title, middle)):
            most = middle
        else:
            too_many = middle
    return _shortened(title, most)


def _shortened(title: str, most: int) -> str:
    whole = printable(title)
    if len(whole) <= most:
        return whole
    data = whole.encode()
    tail = len(data) - most // 2  # bytes: at most so many characters
    while tail < len(data) and data[tail] & 0xC0 == 0x80:
        tail += 1
    return whole[: most // 2] + "..." + data[tail:].decode()


def _legible(plane: Plane, room: Area) -> Area:
    place = natural_place(plane, room)
    if plane.keeps_proportions or place.width >= place.height * _NARROWEST:
        return place
    height = int(place.width / _NARROWEST)
    top = place.top + int((place.height - height) / 2)
    return Area(place.left, top, place.right, top + height)


def _shrunk(room: Area, x: float, y: float) -> Area:
    """A room in the middle of another, its sides shrunk."""
    width, height = int(room.width * x), int(room.height * y)
    left = room.left + int((room.width - width) / 2)
    top = room.top + int((room.height - height) / 2)
    return Area(left, top, left + width, top + height)


def _inside(room: Area, margin: float) -> Area:
    return Area(room.left + margin, room.top + margin, room.right - margin, room.bottom - margin)


def _holds(outer: Area, inner: Area) -> bool:
    return (
        inner.left >= outer.left
        and inner.top >= outer.top
        and inner.right <= outer.right
        and inner.bottom <= outer.bottom
    )


def _shift(low: float, high: float, lowest: float, highest: float) -> int:
    """How far to move what reaches from `low` to `high` so that it lies between the limits; it is not longer."""
    if low < lowest:
        return math.ceil(lowest - low)
    return math.floor(highest - high) if high > highest else 0
