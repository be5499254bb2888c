#!/usr/bin/python3
"""Draws the images that word detail pages name, into data/html/.

The pages refer to them by bare file name, so they are copied beside every
page. The images are committed; run this only to change them. It needs
Debian's python3-pil and fonts-wqy-microhei.
"""
import os
import sys

from PIL import Image, ImageDraw, ImageFont

OUT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "data", "html")
FONT = "/usr/share/fonts/truetype/wqy/wqy-microhei.ttc"

# Section title banners: file, label, base colour.
TITLES = [
    ("cy_title.jpg", "词义", (0x1F, 0x5F, 0x9F)),  # meaning
    ("ys_title.jpg", "英释", (0x2E, 0x7D, 0x32)),  # English explanation
    ("lj_title.jpg", "例句", (0xB2, 0x55, 0x00)),  # samples
    ("dy_title.jpg", "短语", (0x80, 0x00, 0x80)),  # phrases
    ("bh_title.jpg", "变化", (0x00, 0x6D, 0x77)),  # word forms
    ("cg_title.jpg", "词根", (0x80, 0x00, 0x00)),  # word root
    ("xg_title.jpg", "相关", (0x45, 0x5A, 0x64)),  # related words
]


def mix(a, b, t):
    return tuple(int(round(x + (y - x) * t)) for x, y in zip(a, b))


def title(name, label, colour):
    w, h = 120, 22
    img = Image.new("RGB", (w, h), (255, 255, 255))
    d = ImageDraw.Draw(img)
    light = mix(colour, (255, 255, 255), 0.85)
    for x in range(w):  # the bar fades out to the right
        d.line([(x, 2), (x, h - 3)], fill=mix(colour, light, min(1.0, x / (w * 0.8))))
    d.rectangle([0, 2, 4, h - 3], fill=mix(colour, (0, 0, 0), 0.3))
    font = ImageFont.truetype(FONT, 15)
    d.text((10, h // 2), label, font=font, fill=(255, 255, 255), anchor="lm")
    img.save(os.path.join(OUT, name), quality=92)


def speaker(name, colour):
    img = Image.new("RGB", (15, 11), (255, 255, 255))
    d = ImageDraw.Draw(img)
    d.rectangle([1, 4, 3, 6], fill=colour)
    d.polygon([(3, 4), (7, 1), (7, 9), (3, 6)], fill=colour)
    d.arc([5, 2, 11, 8], -60, 60, fill=colour)
    d.arc([5, 0, 14, 10], -60, 60, fill=colour)
    img.save(os.path.join(OUT, name), quality=95)


def save_icon(name):
    img = Image.new("RGB", (11, 11), (255, 255, 255))
    d = ImageDraw.Draw(img)
    blue = (0x1F, 0x5F, 0x9F)
    d.rectangle([0, 0, 10, 10], fill=blue)
    d.rectangle([2, 0, 8, 4], fill=(255, 255, 255))  # the label of a floppy disk
    d.rectangle([6, 1, 7, 3], fill=blue)
    d.rectangle([2, 7, 8, 10], fill=(0xC8, 0xD8, 0xE8))
    img.save(os.path.join(OUT, name), quality=95)


def save_sentence_icon(name):
    # Beside each quiz question: keep the question as a sentence.
    img = Image.new("RGB", (11, 11), (255, 255, 255))
    d = ImageDraw.Draw(img)
    green = (0x2E, 0x7D, 0x32)
    d.rectangle([0, 0, 10, 10], outline=green, fill=(0xE8, 0xF5, 0xE9))
    for y in (3, 5, 7):  # lines of text on a page
        d.line([(2, y), (8, y)], fill=green)
    img.save(os.path.join(OUT, name), quality=95)


def bullet(name):
    img = Image.new("RGB", (13, 11), (255, 255, 255))
    d = ImageDraw.Draw(img)
    d.polygon([(3, 1), (10, 5), (3, 9)], fill=(0x80, 0x00, 0x80))
    img.save(os.path.join(OUT, name))  # a plain 24-bit BMP


def main():
    os.makedirs(OUT, exist_ok=True)
    for name, label, colour in TITLES:
        title(name, label, colour)
    speaker("sound6.jpg", (0x1F, 0x5F, 0x9F))  # samples of the dictionary
    speaker("sound5.jpg", (0x2E, 0x7D, 0x32))  # samples from the net
    save_icon("savesample.jpg")
    save_sentence_icon("savesentence.jpg")
    bullet("icon.bmp")
    return 0


if __name__ == "__main__":
    sys.exit(main())
