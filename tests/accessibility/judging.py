"""Whether a control has a name in the language that is set, and a role that fits what can be done with it or read in it."""
import re
from typing import NamedTuple

from reader import ROWS, TOPS, VIEWS, Gone, Role, State

MENU_ROWS = {Role.MENU_ITEM, Role.CHECK_ITEM, Role.RADIO_ITEM, Role.MENU}
MENUS = {Role.POPUP_MENU, Role.MENU}
CHECKED = {Role.CHECK_BOX, Role.RADIO_BUTTON, Role.TOGGLE_BUTTON}

HAN = re.compile("[\u4e00-\u9fff]")
BETWEEN_NAMES = re.compile(r" ?/ ?| \(|\)|, | - ")
IN_ANY_LANGUAGE = re.compile(r"English|简体中文|(Ctrl|Alt|Shift)\+.*|F\d+|\w+://\S+")


class Place(NamedTuple):
    """A part that has the focus although its role promises nothing that could be done with it."""
    role: Role
    names: re.Pattern
    reason: str


PLACES = [
    Place(Role.PANEL, re.compile("Live pictures|实时预览"), "the keys of the wall count there when no window has the focus"),
    Place(Role.LAYERED_PANE, re.compile("Plans|Settings|预案|设置"), "gives the focus on to its tabs"),
    Place(Role.CANVAS, re.compile(r"(Window|窗口) \d.*"), "the windows of a page, which are chosen by keys and read by name"),
    Place(Role.IMAGE, re.compile(r"(Window|窗口) \d.*"), "a window of the wall: its camera's name and state are read there"),
]


def is_named(sight):
    """By a word, not by a sign."""
    return any(letter.isalpha() for letter in sight.name)


def is_in_language(name, language, site):
    if IN_ANY_LANGUAGE.fullmatch(name):
        return True
    if language == "zh_CN":
        return HAN.search(name) or name in site or all(part in site for part in BETWEEN_NAMES.split(name) if part)
    return not HAN.search(name)


def is_row(sight):
    """Of a view. What has no role of its own is called a filler, and is a row only there."""
    below_view = sight.parent is not None and sight.parent.role in VIEWS
    return below_view and (sight.role in ROWS or sight.role == Role.FILLER)


def is_known_place(sight):
    return any(sight.role == place.role and place.names.fullmatch(sight.name) for place in PLACES)


def is_labelled(sight):
    """A box whose name is what is chosen in it says what it is for elsewhere."""
    return bool(sight.control.labels or sight.control.description)


def is_text(sight):
    return "Text" in sight.interfaces and bool(sight.states & {State.EDITABLE, State.READ_ONLY})


def is_view(sight):
    return State.FOCUSABLE in sight.states and all(is_row(child) for child in sight.children)


def is_tab(sight):
    return sight.parent is not None and sight.parent.role == Role.TAB_LIST


def has_tabs(sight):
    return any(child.role == Role.TAB for child in sight.children)


def can(*actions):
    """One of them, while the control is switched on."""
    return lambda sight: State.ENABLED not in sight.states or bool(set(actions) & set(sight.actions))


FITTING = {
    Role.BUTTON: can("Press", "ShowMenu"),
    **dict.fromkeys(CHECKED, can("Toggle", "Press")),
    **dict.fromkeys((Role.TEXT, Role.PASSWORD), is_text),
    Role.SPIN_BUTTON: lambda sight: "Value" in sight.interfaces,
    Role.COMBO_BOX: lambda sight: is_labelled(sight) and can("Press", "ShowMenu")(sight),
    **dict.fromkeys(VIEWS, is_view),
    **dict.fromkeys(MENU_ROWS, lambda sight: sight.parent is not None and sight.parent.role in MENUS),
    Role.LABEL: lambda sight: State.READ_ONLY in sight.states,  # a text that can be marked and copied
    Role.TAB_LIST: has_tabs,
    Role.TAB: is_tab,
}


def is_fitting(sight):
    """Whether what the role promises can be done or read."""
    judge = FITTING.get(sight.role, lambda other: is_row(other) or is_known_place(other))
    return judge(sight)


def has_focus_in_turn(sight):
    if sight.role in VIEWS:
        return sight.parent.role != Role.COMBO_BOX
    return sight.role not in TOPS and (State.FOCUSABLE in sight.states or sight.role in MENU_ROWS)


def faults_of(sights, language, site):
    for sight in sights:
        if not is_named(sight):
            yield f"no name: {sight.said()} below {sight.parent.said() if sight.parent else 'nothing'}"
        elif not is_in_language(sight.name, language, site):
            yield f"not in {language}: {sight.said()}"
        try:
            if sight.role not in TOPS and not is_fitting(sight):
                above = sight.parent.said() if sight.parent else "nothing"
                yield f"role does not fit: {sight.said()} below {above} {sorted(sight.states)} {sight.actions}"
        except Gone:
            yield f"went while it was looked at: {sight.said()}"
