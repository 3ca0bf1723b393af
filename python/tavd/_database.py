"""A product database."""

from __future__ import annotations

import ctypes
import os
import threading
import weakref
from collections.abc import Iterable, Iterator
from contextlib import contextmanager
from typing import TYPE_CHECKING, Any

from tavd import _binding, _layers, _record, _tables
from tavd._declarations import CONSTANTS, INTERFACE
from tavd._errors import Error, NotFoundError
from tavd._languages import language_number, language_of_market
from tavd._product import KINDS, Duct, Product
from tavd._wording import printable

if TYPE_CHECKING:
    from tavd._select import Selector

_SERVER_NAMES = (str(CONSTANTS["TAVB_SERVER_URI"]), str(CONSTANTS["TAVB_SERVER_HOST"]))
_CLASS_CHARS = 3
_ID_CHARS = 30
_MARKET_CHARS = 39  # that the library's settings hold
_NEAR_IDS = 5  # shown at most
_LOWEST_KEY = b"\x01" * _ID_CHARS  # none can sort before it
_PAST_ALL_IDS = b"\xff" * _ID_CHARS  # none of a class can sort behind it


def open(path: str | os.PathLike[str], market: str = "", language: str | int = "") -> Database:
    """Opens a product database.

    path      the file; or the name of a database on a server of PostgreSQL, "postgresql://..." or "host=..."
    market    market area whose product codes are shown, such as "FIN" or "SWE"; empty: those of no market
    language  of descriptions: "en", "GBR", "English" or 1512; empty: the market's own, or English

    Raises tavd.Error in the service's own words if there is no such file, or if it is no product database; ValueError for
    a market or a language that there is not.

    >>> with tavd.open("catalogue.tavdb", market="FIN", language="en") as db:
    ...     db["DMP", "QZDA-160"].description
    'Round control damper'
    """
    return Database(path, market, language)


class Database:
    """An open product database: products by class and id.

    It is closed by close(), at the end of a `with`, or when nobody holds it any more. Threads may share it.

    >>> len(db), db.classes()[:3]
    (..., [...])
    >>> ("DMP", "QZDA-160") in db
    True
    """

    def __init__(self, path: str | os.PathLike[str], market: str = "", language: str | int = "") -> None:
        self.path = os.fspath(path)
        if "\0" in self.path:
            raise ValueError(f"a path is {self.path!r}, expected one without a NUL")
        self.shown = _shown_name(self.path)
        self.market = market.upper()
        self.language = language_number(language) if language != "" else language_of_market(market)
        _check_interface()
        with _record.process_lock:
            self._set_texts()
            if self.market and (
                len(self.market) > _MARKET_CHARS
                or _binding.function("tavdcore_pcodeAttId")() == CONSTANTS["TAVD_ATT_CODE_DEFAULT"]
            ):
                raise ValueError(f"no market area {market!r}, expected a code such as FIN, SWE or GBR")
        self._handle = int(_binding.function("tavbopendatabase")(None, os.fsencode(self.path), 0))
        if self._handle < 0:
            raise Error(f"cannot open {self.shown!r} as a product database: {_reason()}")
        self._end = weakref.finalize(self, _binding.function("tavdsrv_closedatabase"), self._handle)
        self._selector: Selector | None = None
        self._selecting = threading.Lock()
        self._plain: set[tuple[str, str]] = set()  # classes and beginnings of ids without a layered product

    def close(self) -> None:
        """Closes the database. Products that came from it stay as they are. Closing a second time does nothing."""
        self._end()

    def __enter__(self) -> Database:
        return self

    def __exit__(self, *_error: object) -> None:
        self.close()

    def __repr__(self) -> str:
        return f"<tavd.Database {self.shown!r}{'' if self._end.alive else ', closed'}>"

    @property
    def handle(self) -> int:
        """The handle for the functions of tavd.c. Raises tavd.Error if the database is closed."""
        if not self._end.alive:
            # What the service says of a handle that is none; this one may belong to another database by now.
            _binding.function("tavbfindrec")(CONSTANTS["TAVB_NO_DATABASE"], b"", b"", 0)
            raise Error(f"{self.shown!r} is closed: {_reason()}")
        return self._handle

    # ---- Products

    def __getitem__(self, key: tuple[str, str]) -> Product:
        """The product of a class and an object id, which may be that of a variant of a layered product: it is then put
        together. Raises tavd.NotFoundError, which names those that come near."""
        class_id, object_id = _key(key)
        with self._found(class_id, object_id) as rec:
            is_family = rec is not None and _record.sizing_mode(self.handle, rec) in _FAMILIES
            if not is_family:
                variant = self._variant(class_id, object_id)
                if variant is not None:
                    return variant
            if rec:
                return self._product(rec)
        raise self._not_found(class_id, object_id)

    def __contains__(self, key: object) -> bool:
        try:
            class_id, object_id = _key(key)
        except (TypeError, ValueError):
            return False
        with self._found(class_id, object_id) as rec:
            return bool(rec)

    def __len__(self) -> int:
        """Number of products: all records but the file header and the model records."""
        return sum(1 for _ in self)

    def __iter__(self) -> Iterator[tuple[str, str]]:
        """Class and object id of all products, in the order of the database."""
        for rec in self._records(None):
            yield _record.key_of(self._handle, rec)

    def classes(self) -> list[str]:
        """The classes of products."""
        return list(dict.fromkeys(class_id for class_id, _ in self))

    def products(self, classes: Iterable[str] | None = None) -> Any:
        """The products as a table: of pandas if it is there, else a list of records.

        classes  those wanted, 3 characters each; None: all. Raises tavd.NotFoundError for one that the database does not
                 have

        Columns: class, id, code, description, kind (in words; empty without flow data), size (mm, "160" or "400x200"),
        qv_min and qv_max (l/s, m/s if by_velocity), by_velocity, dp_min and dp_max (total pressure, Pa).

        >>> table = db.products(classes=["DMP"])
        >>> len(table) > 0
        True
        """
        wanted = (
            None if classes is None else [_class(one) for one in ([classes] if isinstance(classes, str) else classes)]
        )
        names = (
            "class",
            "id",
            "code",
            "description",
            "kind",
            "size",
            "qv_min",
            "qv_max",
            "by_velocity",
            "dp_min",
            "dp_max",
        )
        columns: dict[str, list[Any]] = {name: [] for name in names}
        with _record.process_lock:
            self._set_texts()
            for class_id in wanted if wanted is not None else (None,):
                before = len(columns["id"])
                for rec in self._records(class_id):
                    for name, value in zip(names, _row(self._handle, rec)):
                        columns[name].append(value)
                if class_id is not None and len(columns["id"]) == before:
                    raise self._no_class(class_id)
        return _tables.table(columns)

    def select(self, schedule: Any = None, /, **duty: Any) -> Any:
        """The products that fit a duty, the best first, as a table: of pandas if it is there, else a list of records.

        qv               flow, l/s, or flow_unit="m3/h"
        dp               total pressure that is available, Pa
        dp_lowest        pressure that fixed resistances must take at least, Pa
        max_lp           highest level in the room, dB(A)
        max_lw           highest sound power level of each of 8 bands, dB; 0 or None for any
        room_damping     level difference between sound power and room, dB; 4
        throw_min, throw_max  throw length, m
        size             duct size, mm: 160, "400x200", or the smallest and the largest as two of these
        classes          classes of products; all
        parameters       values of parameters by name; "*" tries all of them
        allow_unknown    answers that may be unknown: any of size, pressure, sound, throw
        rank             what is best: sound, pressure, size or fit
        top              how many are given at most; 5
        explain          whether lines without a product get the reason that most of those which come nearest have
        without_end_reflection  whether the duct's end reflection is taken off the sound levels
        threads          how many work on a schedule; 0: as many as the machine has processors

        schedule  a table of duties, a line each: of pandas, a dictionary of columns, or a list of records. Its columns
                  have the names above, or the headings of docs/selection.md such as "qv [m3/h]" and "lp max [dB(A)]"; what
                  a line does not say is taken from the arguments. All other columns are kept in the answer, in front.

        Columns of the answer: rank, class, id, code, description, size, qv (l/s, or m/s of products by air velocity), dp,
        dp_min, dp_max, fan_total (Pa), position, setting, lpa (dB(A)), lw_63 to lw_8000 (dB), throw (m), area (m2), fit,
        unknown; not-a-number where a product has no answer. A schedule's answer has before them the line's number from 0
        (duty) and how many fit (fitting); a line that nothing fits has one row without a product.

        The products are read once, at the first selection: refresh() reads them again. What fits is told in
        docs/selection.md. Raises ValueError that says what was expected of a duty that cannot be asked.

        >>> best = db.select(qv=80, dp=70, max_lp=30, room_damping=15, classes=["DMP"], rank="sound", top=2)
        >>> list(best["id"])
        ['QZDA-315', 'QZDA-250']
        """
        with self._selecting:
            if self._selector is None:
                from tavd._select import Selector

                self._selector = Selector(self)
            selector = self._selector
        return selector.select(schedule, duty)

    def refresh(self) -> None:
        """Has the next selection read the products again, and layered products be looked for again."""
        with self._selecting:
            self._selector = None
        self._plain = set()

    # ---- How records are found

    def _product(self, rec: int, layers: tuple[str, ...] = ()) -> Product:
        with _record.process_lock:
            self._set_texts()
            record = _record.read(self.handle, rec, layers)
        return Product(record)

    def _variant(self, class_id: str, object_id: str) -> Product | None:
        """A variant of a layered product; None if there is none of this id."""
        begins = (class_id, _layers.beginning(object_id))
        if not begins[1] or begins in self._plain or len(object_id.encode()) > _ID_CHARS:
            return None
        with _layers.put_together(self.handle, class_id, object_id) as (rec, layers, is_layered):
            if not is_layered:
                self._plain.add(begins)
            return None if rec is None else self._product(rec, layers)

    def _set_texts(self) -> None:
        _binding.function("tavdcore_set_market_area")(self.market.encode("ascii", "replace"))
        _binding.function("tavdcore_set_user_lng")(self.language)

    @contextmanager
    def _found(self, class_id: str, object_id: str) -> Iterator[int | None]:
        """A record at hand, released at the end; None if there is none."""
        ask = _record.functions()
        db = self.handle
        rec = None
        if object_id and len(object_id.encode()) <= _ID_CHARS:
            rec = ask.tavbfindrec(db, class_id.encode(), object_id.encode(), CONSTANTS["TAVB_FIND_EXACT"])
            if rec is None:
                _check_service()
        try:
            yield rec
        finally:
            ask.tavbreleaserec(rec)

    def _records(self, class_id: str | None) -> Iterator[int]:
        """The records of products, of one class or of all. Each is released when the next one is asked for."""
        ask = _record.functions()
        start = _LOWEST_KEY if class_id is None else class_id.encode()
        rec = ask.tavbfindrec(
            self.handle, start[:_CLASS_CHARS], _LOWEST_KEY if class_id is None else b"", CONSTANTS["TAVB_FIND_FROM"]
        )
        if rec is None:
            _check_service()
        try:
            while rec:
                own = _record.raw_key(self._handle, rec)[0]
                if class_id is not None and own != class_id.encode():
                    return
                skipped = own in _NO_PRODUCTS
                if not skipped:
                    yield rec
                if skipped:
                    following = ask.tavbfindrec(self.handle, own, _PAST_ALL_IDS, CONSTANTS["TAVB_FIND_FROM"])
                    if following and _record.raw_key(self._handle, following)[0] == own:
                        ask.tavbreleaserec(following)
                        following = None
                else:
                    following = ask.tavbnextrec(self.handle, rec)
                if following is None:
                    _check_service()
                ask.tavbreleaserec(rec)
                rec = following
        finally:
            ask.tavbreleaserec(rec)

    def _not_found(self, class_id: str, object_id: str) -> NotFoundError:
        ids = [_record.key_of(self._handle, rec)[1] for rec in self._records(class_id)]
        if not ids:
            return self._no_class(class_id)
        import difflib

        near = difflib.get_close_matches(object_id, ids, _NEAR_IDS)
        told = f"; near it: {', '.join(near)}" if near else "; products() shows what there is"
        return NotFoundError(f"no product {object_id!r} of class {class_id!r} in {self.shown}{told}")

    def _no_class(self, class_id: str) -> NotFoundError:
        known = ", ".join(self.classes())
        return NotFoundError(
            f"no class {class_id!r} in {self.shown}; it {'has ' + known if known else 'holds no products'}"
        )


_FAMILIES = (CONSTANTS["TAVD_SIZING_PATTERN"], CONSTANTS["TAVD_SIZING_LIST"])
_NO_PRODUCTS = (str(CONSTANTS["TAVD_FILEHEADER_CLASS"]).encode(), str(CONSTANTS["TAVD_MODEL_CLASS"]).encode())


def _row(db: int, rec: int) -> tuple[Any, ...]:
    ask = _record.functions()
    flow = _record.flow_data(db, rec)
    duct = _record.duct_size(db, rec)
    is_round = duct.shape == CONSTANTS["TAVD_DUCT_ROUND"]
    return (
        *_record.key_of(db, rec),
        _record.product_text(db, rec, ask.tavdf_copyproductcodew),
        _record.product_text(db, rec, ask.tavdf_copyproductdescw),
        KINDS.get(flow.kind, f"kind {flow.kind}") if flow.nhdd != 0 else "",
        str(Duct(is_round, duct.b, duct.b if is_round else duct.h)),
        flow.qvmin,
        flow.qvmax,
        flow.isvelocity != b"\0",
        flow.dpmin,
        flow.dpmax,
    )


def _key(key: object) -> tuple[str, str]:
    if not (isinstance(key, tuple) and len(key) == 2 and all(isinstance(part, str) for part in key)):
        raise TypeError(
            f"a product is asked for by {key!r}, expected its class and its object id such as db['DMP', 'QZDA-160']"
        )
    if "\0" in key[0] + key[1]:
        raise ValueError(f"a product is asked for by {key!r}, expected names without a NUL")
    return _class(key[0]), key[1].rstrip(" ")


def _class(class_id: str) -> str:
    if not class_id or len(class_id.encode()) > _CLASS_CHARS:
        raise ValueError(f"a class is {class_id!r}, expected {_CLASS_CHARS} characters")
    return class_id.ljust(_CLASS_CHARS)


def is_on_server(path: str) -> bool:
    """Whether a database of this name is on a server; any other name is a file's."""
    return path.startswith(_SERVER_NAMES)


def _shown_name(path: str) -> str:
    """A database's name as messages are to show it: without passwords."""
    name = os.fsencode(path)
    shown = ctypes.create_string_buffer(len(name) + 4)
    _binding.function("tavdsrv_shownname")(name, shown, len(shown))
    return os.fsdecode(shown.value)


def _reason() -> str:
    """The service's words on this thread's last call."""
    text: bytes = _record.functions().tavdsrv_lasterror()
    return printable(text.decode("utf-8", "replace"))


def _check_service() -> None:
    reason = _reason()
    if reason:
        raise Error(reason)


def _check_interface() -> None:
    if _binding.function("tavd_version_nmb")(INTERFACE) != INTERFACE:
        raise Error(f"libtavd has another interface than {INTERFACE}, for which this package was made")
