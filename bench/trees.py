# SPDX-License-Identifier: GPL-2.0-or-later
"""The files on which the programs are compared, made in a folder that the caller removes."""

import os
import shutil
import subprocess

TAGS = """
set Exif.Image.Make Marlowe
set Exif.Image.Model Field7
set Exif.Image.Copyright Somebody
set Exif.Image.ImageDescription A stony beach in the morning
set Exif.Photo.ExposureTime 1/250
set Exif.Photo.FNumber 28/10
set Exif.Photo.ISOSpeedRatings 400
set Exif.Photo.FocalLength 50/1
set Exif.Photo.ExifVersion 48 50 51 49
set Iptc.Application2.Keywords beach
add Iptc.Application2.Keywords stones
set Xmp.dc.rights lang=x-default Somebody
"""


def run(*command):
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL)


def noisy_picture(path, width, height):
    """A picture with about as much detail as a photo has, and the facts that a camera and its owner leave."""
    start = os.path.dirname(path)
    noise, soft, light = (os.path.join(start, name + ".v") for name in ("noise", "soft", "light"))
    bands = []
    for band in range(3):
        bands.append(os.path.join(start, f"band{band}.v"))
        run("vips", "gaussnoise", noise, str(width), str(height), "--mean", "128", "--sigma", "60")
        run("vips", "gaussblur", noise, soft, "2.5")
        run("vips", "cast", soft, bands[-1], "uchar")
    run("vips", "bandjoin", " ".join(bands), light)
    run("vips", "copy", light, path + "[Q=85]", "--interpretation", "srgb")
    for used in [noise, soft, light, *bands]:
        os.remove(used)
    tags = os.path.join(start, "tags")
    with open(tags, "w") as file:
        file.write(TAGS.strip())
    run("exiv2", "-m", tags, path)
    os.remove(tags)


class Trees:
    """`photos` pictures of 12 megapixels in 20 folders and in one, pictures of other formats, and very many files that
    are small or empty."""

    def __init__(self, root, photos, empty, small, copies):
        self.root = root
        self.tree, self.flat, self.empty = (os.path.join(root, name) for name in ("tree", "flat", "empty"))
        base = os.path.join(root, "base.jpg")
        noisy_picture(base, 4000, 3000)
        # Whole copies: what is known of one file must not answer for the next.
        self.photos = [os.path.join(self.tree, f"{i % 20:02}", f"photo {i}.jpg") for i in range(photos)]
        self.copy(base, self.photos)
        self.flat_photos = [os.path.join(self.flat, f"photo {i}.jpg") for i in range(photos)]
        for here, there in zip(self.photos, self.flat_photos):
            os.makedirs(self.flat, exist_ok=True)
            os.link(here, there)
        self.formats = {}
        for suffix in ("jpg", "png", "tif", "webp"):
            original = os.path.join(root, "original." + suffix)
            run("vips", "copy", base, original)
            self.formats[suffix] = [os.path.join(root, suffix, f"{i}.{suffix}") for i in range(copies)]
            self.copy(original, self.formats[suffix])
        for i in range(empty):
            path = os.path.join(self.empty, f"{i % 200:03}", f"{i}.jpg")
            if i < 200:
                os.makedirs(os.path.dirname(path))
            open(path, "w").close()
        tiny = os.path.join(root, "tiny.jpg")
        noisy_picture(tiny, 16, 12)
        self.warming = os.path.join(root, "warming")
        self.copy(tiny, [os.path.join(self.warming, f"{i}.jpg") for i in range(100)])
        self.small = {}
        for count in small:
            self.small[count] = os.path.join(root, f"small {count}")
            self.copy(tiny, [os.path.join(self.small[count], f"image {i}.jpg") for i in range(count)])

    @staticmethod
    def copy(original, paths):
        for folder in {os.path.dirname(path) for path in paths}:
            os.makedirs(folder)
        for path in paths:
            shutil.copyfile(original, path)
