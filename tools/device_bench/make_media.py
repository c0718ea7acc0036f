#!/usr/bin/env python3
"""Makes the files that the emulated library plays: the same bytes each time.

    make_media.py FOLDER
"""

import math
import pathlib
import struct
import subprocess
import sys
import wave

# name, rate, channels, seconds, quality of the encoder
FILES = (
    ("stereo_44100", 44100, 2, 6, 4),
    ("mono_22050", 22050, 1, 4, 3),
    ("stereo_8000", 8000, 2, 3, 2),
    ("six_44100", 44100, 6, 2, 5),  # has the largest codebooks
    ("q0", 44100, 2, 2, 0),  # what the encoder's quality costs
    ("q2", 44100, 2, 2, 2),
    ("q4", 44100, 2, 2, 4),
    ("q6", 44100, 2, 2, 6),
)


def samples(rate, channels, seconds):
    """A few gliding tones, and bursts of noise for the encoder to work on."""
    noise = 1
    for i in range(rate * seconds):
        t = i / rate
        tone = sum(math.sin(2 * math.pi * (110 * k + 15 * t) * t) / k for k in (1, 2, 3, 5, 8))
        for channel in range(channels):
            noise = (noise * 1664525 + 1013904223) & 0xFFFFFFFF
            burst = math.exp(-8 * (t * (2 + channel) % 1)) * ((noise >> 16) / 32768 - 1)
            value = 7000 * tone * (1 - 0.3 * channel * math.sin(3 * t)) + 9000 * burst
            yield max(-32768, min(32767, int(value)))


def main():
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for number, (name, rate, channels, seconds, quality) in enumerate(FILES, 1):
        source = folder / (name + ".wav")
        with wave.open(str(source), "wb") as out:
            out.setnchannels(channels)
            out.setsampwidth(2)
            out.setframerate(rate)
            for value in samples(rate, channels, seconds):
                out.writeframesraw(struct.pack("<h", value))
        subprocess.run(["oggenc", "-Q", "--utf8", "-q", str(quality), "-s", str(number),
                        "-c", "artist=Sine and Saw", "-c", "TITLE=Test Tone \u00e9\u20ac",
                        "-c", "Genre=Noise", "-c", "TRACKNUMBER=7",
                        "-o", str(folder / (name + ".ogg")), str(source)], check=True)
        source.unlink()


if __name__ == "__main__":
    main()
