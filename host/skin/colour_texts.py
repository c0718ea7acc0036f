"""viscolor.txt and pledit.txt."""
import palette as p
from palette import mix


def _named_colours():
    yield "background", p.GLASS
    yield "dots", p.GHOST
    ramp = (p.ACCENT_LIT, p.ACCENT, p.ACCENT_DIM, p.ACCENT_DEEP)
    for i in range(16):
        place = i / 15 * (len(ramp) - 1)
        low = min(int(place), len(ramp) - 2)
        name = {0: "spectrum, top", 15: "spectrum, bottom"}.get(i, "spectrum")
        yield name, mix(ramp[low], ramp[low + 1], place - low)
    for i in range(5):
        name = {0: "oscilloscope, brightest", 4: "oscilloscope, darkest"}.get(i, "oscilloscope")
        yield name, mix(p.ACCENT_LIT, p.ACCENT_DIM, i / 4)
    yield "peaks", p.INK


def visualisation_text():
    lines = (f"{red},{green},{blue}, // {i} {name}\r\n"
             for i, (name, (red, green, blue)) in enumerate(_named_colours()))
    return "".join(lines).encode("ascii")


def playlist_text():
    colours = (("Normal", mix(p.INK_DIM, p.INK, 0.5)), ("Current", p.ACCENT),
               ("NormalBG", p.GLASS), ("SelectedBG", p.TITLE_LOW))
    lines = [f"{key}=#{bytes(colour).hex().upper()}" for key, colour in colours]
    return "\r\n".join(["[Text]", *lines, "Font=Tahoma", ""]).encode("ascii")
