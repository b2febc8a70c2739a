"""Draws and encodes the pictures of a camera once, and keeps them in a folder of the user's cache."""
import colorsys
import hashlib
import json
import os
import pathlib
import random
import struct
import tempfile

import gi

gi.require_version("Gst", "1.0")
gi.require_version("GstApp", "1.0")
from gi.repository import Gst, GstApp  # noqa: E402,F401

import block_code  # noqa: E402

DRAWN_AS = 1  # counts up when the pictures change, so that no old ones are shown
RATE = block_code.PICTURES_PER_SECOND

# One slice a picture and a key picture a second, as the clients are measured with.
ENCODERS = {
    "h264": "openh264enc gop-size={rate} slice-mode=n-slices num-slices=1 scene-change-detection=false"
            " bitrate={bits} complexity=low ! h264parse config-interval=-1"
            " ! video/x-h264,stream-format=byte-stream,alignment=au,profile=constrained-baseline",
    "h265": "x265enc key-int-max={rate} speed-preset=ultrafast tune=zerolatency bitrate={kbits} log-level=none"
            " option-string=slices=1:open-gop=0:bframes=0:scenecut=0:pools=1"
            " ! h265parse config-interval=-1 ! video/x-h265,stream-format=byte-stream,alignment=au",
    "mjpeg": "jpegenc quality=70",
}


NEEDED = {"h264": ("openh264enc", "h264parse"), "h265": ("x265enc", "h265parse"), "mjpeg": ("jpegenc",)}


def missing_elements(codec):
    """What GStreamer lacks here to draw and encode; without it a client would wait for pictures for ever."""
    return [name for name in ("textoverlay", *NEEDED[codec]) if Gst.ElementFactory.find(name) is None]


class Loop:
    """The coded pictures of one stream and what they are."""

    def __init__(self, caps, units):
        self.caps = caps
        self.units = units  # (bytes, whether it is a key picture)

    def key_before(self, index):
        while not self.units[index][1]:
            index -= 1
        return index


def colour_of(camera):
    """Y, U and V of a camera's background: far from its neighbours'."""
    red, green, blue = colorsys.hsv_to_rgb(camera * 0.381966 % 1, 0.6, 0.55)
    luma = 0.299 * red + 0.587 * green + 0.114 * blue
    return [round(16 + 219 * luma), round(128 + 224 * 0.564 * (blue - luma)), round(128 + 224 * 0.713 * (red - luma))]


def background(width, height, luma):
    """Bands of slightly different brightness, so that a picture is more than one flat colour."""
    lines = [bytes(luma + (x * 16 // width + phase) % 8 - 4 for x in range(width)) for phase in range(8)]
    return bytearray(b"".join(lines[y * 24 // height % 8] for y in range(height)))


def grain(width, luma):
    """A long line of coarse noise: it moves through a band, so that the coded pictures weigh what a camera's do."""
    dice = random.Random(luma)
    return b"".join(bytes([luma + dice.randrange(-24, 24)]) * 4 for _ in range(width))


def frames(camera, stream, width, height):
    """The raw pictures of a loop (I420): the code, a band of noise, and a bar that goes round once in a loop."""
    luma, blue, red = colour_of(camera)
    ground = background(width, height, luma)
    quarter = ((width + 1) // 2) * ((height + 1) // 2)
    colours = bytes([blue]) * quarter + bytes([red]) * quarter
    noise = grain(width, luma)
    bar_top, bar_height = height * 11 // 16, height // 8
    for number in range(block_code.PICTURES):
        plane = bytearray(ground)
        left = number * width // block_code.PICTURES
        for y in range(bar_top, bar_top + bar_height):
            begin = (number * 52 + y // 4 * 36) % (3 * width)
            plane[y * width:(y + 1) * width] = noise[begin:begin + width]
            plane[y * width + left:y * width + left + width // 20] = bytes([210]) * (width // 20)
        block_code.draw(plane, width, height, block_code.bits_of(number, camera, stream))
        yield bytes(plane) + colours


def encode(codec, size, name, caption, camera, stream):
    width, height = size
    kbits = width * height * RATE // 4000
    encoder = ENCODERS[codec].format(rate=RATE, bits=kbits * 1000, kbits=kbits)
    pipeline = Gst.parse_launch(
        f"appsrc name=source format=time"
        f" caps=video/x-raw,format=I420,width={width},height={height},framerate={RATE}/1"
        f" ! textoverlay name=name valignment=position ypos=0.4 font-desc=\"DejaVu Sans Bold 24\""
        f" ! textoverlay name=caption valignment=position ypos=0.6 font-desc=\"DejaVu Sans 20\""
        f" ! {encoder} ! appsink name=sink sync=false")
    pipeline.get_by_name("name").set_property("text", name)
    pipeline.get_by_name("caption").set_property("text", caption)
    source, sink = pipeline.get_by_name("source"), pipeline.get_by_name("sink")
    pipeline.set_state(Gst.State.PLAYING)
    units, caps = [], None
    source.set_property("max-bytes", 0)
    for number, frame in enumerate(frames(camera, stream, width, height)):
        buffer = Gst.Buffer.new_wrapped(frame)
        buffer.pts = number * Gst.SECOND // RATE
        buffer.duration = Gst.SECOND // RATE
        source.emit("push-buffer", buffer)
    # No end of stream: one of the encoders complains of it on the error channel.
    while len(units) < block_code.PICTURES:
        sample = sink.emit("try-pull-sample", 20 * Gst.SECOND)
        if sample is None:
            break
        caps = sample.get_caps().to_string()
        buffer = sample.get_buffer()
        units.append((buffer.extract_dup(0, buffer.get_size()), not buffer.has_flags(Gst.BufferFlags.DELTA_UNIT)))
    pipeline.set_state(Gst.State.NULL)
    if len(units) != block_code.PICTURES:
        raise RuntimeError(f"{codec} of {width}x{height}: {len(units)} of {block_code.PICTURES} pictures were encoded")
    return Loop(caps, units)


def cache_folder():
    base = os.environ.get("XDG_CACHE_HOME") or pathlib.Path.home() / ".cache"
    return pathlib.Path(base) / "tarn-cameras"


def load(path):
    with open(path, "rb") as file:
        (length,) = struct.unpack(">I", file.read(4))
        header = json.loads(file.read(length))
        units = [(file.read(size), key) for size, key in header["units"]]
    if len(units) != block_code.PICTURES or len(units[-1][0]) != header["units"][-1][0]:
        raise ValueError(f"{path} is cut short")
    return Loop(header["caps"], units)


def store(path, loop):
    """Through a file of its own name: several servers may encode the same pictures at once."""
    path.parent.mkdir(parents=True, exist_ok=True)
    header = json.dumps({"caps": loop.caps, "units": [(len(data), key) for data, key in loop.units]}).encode()
    with tempfile.NamedTemporaryFile(dir=path.parent, delete=False) as file:
        file.write(struct.pack(">I", len(header)) + header + b"".join(data for data, _ in loop.units))
    os.replace(file.name, path)


def loop_for(codec, size, name, caption, camera, stream):
    """From the cache, else encoded now."""
    what = json.dumps([DRAWN_AS, codec, list(size), name, caption, camera, stream, block_code.PICTURES])
    path = cache_folder() / (hashlib.sha256(what.encode()).hexdigest()[:24] + ".loop")
    try:
        return load(path)
    except (OSError, ValueError, KeyError, struct.error):
        loop = encode(codec, size, name, caption, camera, stream)
    try:
        store(path, loop)
    except OSError:
        pass  # only the next start takes longer
    return loop
