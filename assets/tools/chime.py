#!/usr/bin/env python3
"""Writes the chime of a private message: two soft notes, the second a fourth above the first."""

import math
import pathlib
import struct
import wave

RATE = 44100
LENGTH = 0.58
NOTES = [(0.0, 659.26), (0.13, 880.00)]       # start in seconds, pitch in Hz
PARTIALS = [(1, 1.0, 7.5), (2, 0.22, 11.0), (3, 0.07, 16.0), (4.02, 0.03, 24.0)]  # ratio, level, decay per second
ATTACK = 0.012
FADE = 0.09
PEAK = 10 ** (-9 / 20)


def sample(t):
    value = 0.0
    for start, pitch in NOTES:
        age = t - start
        if age < 0:
            continue
        rise = 0.5 - 0.5 * math.cos(math.pi * min(age / ATTACK, 1))
        value += rise * sum(level * math.exp(-decay * age) * math.sin(2 * math.pi * pitch * ratio * age)
                            for ratio, level, decay in PARTIALS)
    # The tail must reach silence before the file ends, or the end clicks.
    return value * (0.5 - 0.5 * math.cos(math.pi * min((LENGTH - t) / FADE, 1)))


def main():
    samples = [sample(i / RATE) for i in range(int(RATE * LENGTH))]
    gain = PEAK * 32767 / max(abs(v) for v in samples)
    target = pathlib.Path(__file__).resolve().parent.parent / "sounds" / "send.wav"
    target.parent.mkdir(exist_ok=True)
    with wave.open(str(target), "wb") as out:
        out.setnchannels(1)
        out.setsampwidth(2)
        out.setframerate(RATE)
        out.writeframes(b"".join(struct.pack("<h", round(v * gain)) for v in samples))


if __name__ == "__main__":
    main()
