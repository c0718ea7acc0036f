"""The skin's colours: slate bodies, dark glass, one amber accent."""


def rgb(text):
    return tuple(bytes.fromhex(text))


def mix(under, over, share):
    """`share` 0 is `under`, 1 is `over`."""
    return tuple(round(u + (o - u) * share) for u, o in zip(under, over))


EDGE = rgb("14181e")  # outlines of windows, keys and wells
BODY = rgb("333b47")
BODY_TOP = rgb("3c4553")
BODY_LOW = rgb("2a313b")
LIGHT = rgb("5b6677")  # the lit side of a bevel
SHADE = rgb("222831")  # its dark side

TITLE_TOP = rgb("4c5769")
TITLE_LOW = rgb("343c49")
QUIET_TOP = rgb("3a4350")  # title bars of windows without the focus
QUIET_LOW = rgb("303743")

KEY_TOP = rgb("586476")
KEY_LOW = rgb("3e4755")
KEY_LIT = rgb("7a8798")
KEY_DOWN_TOP = rgb("242a33")
KEY_DOWN_LOW = rgb("323a46")

GLASS = rgb("0d1117")
GHOST = rgb("1b212a")  # unlit segments and lamps behind the glass
GLASS_LINE = rgb("252d38")
GLASS_INK = rgb("343e4c")  # unlit words

INK = rgb("dde3ea")
INK_DIM = rgb("93a0b1")
INK_FAINT = rgb("6b7788")

ACCENT = rgb("ffb347")
ACCENT_LIT = rgb("ffdca3")
ACCENT_DIM = rgb("a8742f")
ACCENT_DEEP = rgb("5a4224")

RED = rgb("e2574c")
GREEN = rgb("7ac17f")
