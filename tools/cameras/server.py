#!/usr/bin/python3
"""Cameras for a desk without any: an RTSP server whose streams carry their number (see block_code.py).

    rtsp://127.0.0.1:PORT/1/main and /1/sub, and so on for each camera

The first line on standard output tells {"port": ...} as JSON; each line on standard input is a command (COMMANDS below
lists them), answered with one line of JSON. A client must use TCP.
"""
import argparse
import collections
import json
import os
import pathlib
import queue
import signal
import sys
import threading
import time

import gi

gi.require_version("Gst", "1.0")
gi.require_version("GstRtsp", "1.0")
gi.require_version("GstRtspServer", "1.0")
from gi.repository import Gio, GLib, Gst, GstRtsp, GstRtspServer  # noqa: E402

import block_code  # noqa: E402
import onvif_device  # noqa: E402
import pictures  # noqa: E402

RATE = block_code.PICTURES_PER_SECOND
STREAMS = ("main", "sub")
PRESETS = ("Wide", "Close up")  # of the demo site's cameras
PAYLOADERS = {
    "h264": "rtph264pay config-interval=-1 aggregate-mode=zero-latency",
    "h265": "rtph265pay config-interval=-1 aggregate-mode=zero-latency",
    "mjpeg": "rtpjpegpay",
}


class Feed:
    """One prepared medium, shared by all who watch the stream: what was sent last, and when by its own clock."""

    def __init__(self, media):
        self.media = media
        self.source = media.get_element().get_child_by_name("source")
        self.loop = None
        self.last = None  # count of the picture
        self.time = 0  # of the next picture

    def send(self, loop, count, duration):
        if loop is not self.loop:
            self.source.set_property("caps", Gst.Caps.from_string(loop.caps))
            self.loop = loop
        buffer = Gst.Buffer.new_wrapped(loop.units[count % block_code.PICTURES][0])
        buffer.pts = buffer.dts = self.time
        buffer.duration = duration
        self.time += duration
        self.source.emit("push-buffer", buffer)

    def send_until(self, loop, count):
        """All that is due. At the beginning, after a change and a long pause from the last key picture on, quickly."""
        frame = Gst.SECOND // RATE
        goes_on = loop is self.loop and 0 <= count - self.last <= RATE
        index = count % block_code.PICTURES
        first = self.last + 1 if goes_on else count - index + loop.key_before(index)
        if self.last is not None and not goes_on:
            self.time += max(0, count - self.last - 1) * frame
        for earlier in range(first, count):
            self.send(loop, earlier, frame if goes_on else Gst.MSECOND)
        if first <= count:
            self.send(loop, count, frame)
        self.last = count


class Stream(GstRtspServer.RTSPMediaFactory):
    """One size of a camera."""

    __gtype_name__ = "CameraStream"

    def __init__(self, camera, kind):
        super().__init__()
        self.camera = camera
        self.kind = kind
        self.path = f"/{camera.code}/{kind}"
        self.feeds = []
        self.set_shared(True)
        self.set_latency(0)
        self.set_protocols(GstRtsp.RTSPLowerTrans.TCP)
        self.connect("media-configure", self.on_configure)
        self.use_codec()

    def use_codec(self):
        self.set_launch(f"( appsrc name=source is-live=true format=time max-bytes=0"
                        f" ! {PAYLOADERS[self.camera.codec]} name=pay0 pt=96 )")

    def loop(self):
        return self.camera.loop(self.kind)

    def on_configure(self, _factory, media):
        media.set_rate_control(False)  # pictures are sent when they are due, by the wall clock
        feed = Feed(media)
        # A client that asks for a range must not seek in what is live.
        feed.source.get_static_pad("src").add_probe(Gst.PadProbeType.EVENT_UPSTREAM, drop_seek)
        media.connect("unprepared", lambda _media: self.feeds.remove(feed))
        self.camera.feed(self, feed, block_code.number_at(time.time(), self.camera.number))
        self.feeds.append(feed)  # only now: the clock runs in another thread


def drop_seek(_pad, info):
    return Gst.PadProbeReturn.DROP if info.get_event().type == Gst.EventType.SEEK else Gst.PadProbeReturn.OK


class Camera:
    def __init__(self, number, code, name, codec, sizes):
        self.number = number  # in the pictures and the commands
        self.code = code  # in the paths
        self.name = name
        self.codec = codec
        self.sizes = dict(sizes)
        self.preset = ""
        self.silent = False
        self.repeats = None  # count of the one picture that is sent again and again
        self.streams = {kind: Stream(self, kind) for kind in STREAMS}
        self.loops = {}

    def loop(self, kind):
        return self.loop_at(self.preset, kind)

    def loop_at(self, preset, kind):
        what = (self.codec, self.sizes[kind], preset, kind)
        if what not in self.loops:
            caption = preset or kind
            self.loops[what] = pictures.loop_for(self.codec, self.sizes[kind], self.name, caption, self.number,
                                                 STREAMS.index(kind))
        return self.loops[what]

    def prepare(self, preset):
        """What is watched now, in any thread: pictures that were never encoded take a second."""
        for kind, stream in self.streams.items():
            if stream.feeds:
                self.loop_at(preset, kind)

    def feed(self, stream, feed, count):
        loop = stream.loop()
        if self.repeats is None:
            feed.send_until(loop, count)
        else:
            feed.send(loop, self.repeats - self.repeats % RATE, Gst.SECOND // RATE)  # a key picture

    def send(self, count):
        if self.silent:
            return
        for stream in self.streams.values():
            for feed in list(stream.feeds):
                self.feed(stream, feed, count)


class Visits:
    """Who is connected and what they asked for; a path is "/1/main"."""

    def __init__(self, server):
        self.clients = {}  # to the paths that they have set up
        self.totals = collections.defaultdict(collections.Counter)
        self.connects = 0
        server.connect("client-connected", self.on_connected)

    def on_connected(self, _server, client):
        self.connects += 1
        self.clients[client] = collections.Counter()
        client.connect("closed", self.on_closed)
        client.connect("describe-request", self.count, "describe")
        client.connect("setup-request", self.count, "setup")
        client.connect("play-request", self.count, "play")
        client.connect("teardown-request", self.count, "teardown")

    @staticmethod
    def path_of(context):
        return "/".join(context.uri.abspath.split("/")[:3])

    def count(self, client, context, what):
        path = self.path_of(context)
        self.totals[path][what] += 1
        if what in ("setup", "teardown"):
            self.clients[client][path] = int(what == "setup")

    def on_closed(self, client):
        for path, open_sessions in self.clients.pop(client, {}).items():
            self.totals[path]["closed_without_teardown"] += open_sessions

    def clients_of(self, camera):
        wanted = [stream.path for stream in camera.streams.values()]
        return [client for client, paths in self.clients.items() if any(paths[path] for path in wanted)]

    def report(self):
        now_open = collections.Counter()
        for paths in self.clients.values():
            now_open.update({path: count for path, count in paths.items() if count})
        return {"tcp": len(self.clients), "connects": self.connects, "open": dict(now_open),
                "totals": {path: dict(counts) for path, counts in self.totals.items()}}


class Site:
    """The cameras, the one clock that sends their pictures, and the commands that change how they behave."""

    COMMANDS = """connections: who is connected, per path, and what was asked for so far
silence N | speak N: sends no pictures / again
repeat N | move N: sends one coded picture again and again / the usual ones
codec N h264|h265|mjpeg: closes the connections of the camera, which then has another codec
size N main|sub WIDTHxHEIGHT: other size from the next picture on, in the same stream
preset N [NAME]: the picture shows the preset's name
end N: ends the streams, then closes the connections
drop N: closes the connections
remove N | add N: the paths are unknown / known again
late: the longest that a picture was sent after its time, in ms, since the last such question"""

    def __init__(self, server, cameras):
        self.cameras = cameras
        self.mounts = server.get_mount_points()
        self.visits = Visits(server)
        self.late = 0.0
        self.due = [block_code.number_at(time.time(), phase) for phase in range(block_code.PHASES)]  # sent last
        self.by_phase = [[camera for number, camera in cameras.items() if number % block_code.PHASES == phase]
                         for phase in range(block_code.PHASES)]
        for camera in cameras.values():
            self.add(camera)
        self.tick()

    def tick(self):
        now = time.time()
        for phase in range(block_code.PHASES):
            count = block_code.number_at(now, phase)
            if count != self.due[phase]:
                late = now - (count + phase / block_code.PHASES) / RATE
                for camera in self.by_phase[phase]:
                    camera.send(count)
                self.late = max(self.late, late)
                self.due[phase] = count
        step = 1 / (RATE * block_code.PHASES)
        wait = step - time.time() % step
        GLib.timeout_add(int(wait * 1000) + 1, self.tick)
        return False

    def follow(self, line):
        """The answer to one command."""
        word, *rest = line.split()
        handler = getattr(self, "do_" + word, None)
        if handler is None:
            raise ValueError(f"unknown command {word}")
        if not rest:
            return handler()
        return handler(self.cameras[int(rest[0])], *rest[1:])

    def add(self, camera):
        for stream in camera.streams.values():
            self.mounts.add_factory(stream.path, stream)

    def do_connections(self):
        return self.visits.report()

    def do_late(self):
        answer = {"late_ms": round(self.late * 1000, 1)}
        self.late = 0.0
        return answer

    def do_silence(self, camera):
        camera.silent = True

    def do_speak(self, camera):
        camera.silent = False

    def do_repeat(self, camera):
        camera.repeats = block_code.number_at(time.time(), camera.number)

    def do_move(self, camera):
        camera.repeats = None
        for stream in camera.streams.values():
            for feed in stream.feeds:
                feed.last, feed.loop = block_code.number_at(time.time(), camera.number) - 1, None

    def do_codec(self, camera, codec):
        if codec not in PAYLOADERS:
            raise ValueError(f"unknown codec {codec}")
        camera.codec = codec
        for stream in camera.streams.values():
            stream.use_codec()
        self.do_drop(camera)

    def do_size(self, camera, kind, size):
        camera.sizes[kind] = parse_size(size)

    def do_preset(self, camera, *name):
        camera.preset = " ".join(name)

    def do_end(self, camera):
        for stream in camera.streams.values():
            for feed in stream.feeds:
                feed.source.emit("end-of-stream")
        GLib.timeout_add(300, lambda: self.do_drop(camera) or False)

    def do_drop(self, camera):
        for client in self.visits.clients_of(camera):
            client.close()

    def do_remove(self, camera):
        for stream in camera.streams.values():
            self.mounts.remove_factory(stream.path)

    def do_add(self, camera):
        self.add(camera)


def parse_size(text):
    width, height = (int(part) for part in text.split("x"))
    if not (32 <= width <= 4096 and 24 <= height <= 4096) or width % 2 or height % 2:
        raise ValueError(f"{text} is no size of a picture")
    return width, height


def names(count, file):
    lines = file.read_text(encoding="utf-8").splitlines() if file else []
    known = [line for line in lines if line.strip()]
    return {number: known[number - 1] if number <= len(known) else f"CAM {number:03d}"
            for number in range(1, count + 1)}


def protect(server, options):
    """Passwords and the certificate, as far as they are asked for."""
    if options.user is None and options.tls is None:
        return
    auth = GstRtspServer.RTSPAuth()
    if options.tls:
        certificate, key = options.tls
        auth.set_tls_certificate(Gio.TlsCertificate.new_from_files(certificate, key))
    token = GstRtspServer.RTSPToken()
    token.set_string("media.factory.role", "viewer")
    if options.user is None:
        auth.set_default_token(token)
    elif options.digest:
        auth.set_supported_methods(GstRtsp.RTSPAuthMethod.DIGEST)
        auth.add_digest(options.user, options.password, token)
    else:
        auth.add_basic(GstRtspServer.RTSPAuth.make_basic(options.user, options.password), token)
    server.set_auth(auth)


def permit(camera):
    for stream in camera.streams.values():
        stream.add_role_from_structure(Gst.Structure.new_from_string(
            "viewer, media.factory.access=(boolean)true, media.factory.construct=(boolean)true"))


def arguments():
    parser = argparse.ArgumentParser(description=__doc__, epilog="Commands:\n" + Site.COMMANDS,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--cameras", type=int, default=40, metavar="N")
    parser.add_argument("--names", type=pathlib.Path, metavar="FILE", help="the cameras' names, one a line")
    parser.add_argument("--first-code", type=int, default=1, metavar="CODE",
                        help="names the first camera in the paths, then CODE + 1 and so on")
    parser.add_argument("--address", default="127.0.0.1")
    parser.add_argument("--port", type=int, default=0, help="0: the system chooses")
    parser.add_argument("--codec", choices=sorted(PAYLOADERS), default="h264")
    parser.add_argument("--main-size", type=parse_size, default=(640, 480), metavar="WIDTHxHEIGHT")
    parser.add_argument("--sub-size", type=parse_size, default=(320, 240), metavar="WIDTHxHEIGHT")
    parser.add_argument("--user", help="asks for this name and the password in the variable CAMERAS_PASSWORD")
    parser.add_argument("--digest", action="store_true", help="Digest (MD5) instead of Basic")
    parser.add_argument("--tls", nargs=2, metavar=("CERTIFICATE", "KEY"), help="rtsps with these PEM files")
    parser.add_argument("--device", action="store_true",
                        help="answers as an ONVIF device, too, at the port that it tells; presets show in the pictures")
    parser.add_argument("--with-parent", action="store_true", help="ends when the process that started it does")
    parser.add_argument("--until-eof", action="store_true", help="ends when its input does")
    options = parser.parse_args()
    options.password = onvif_device.password()
    return options


def offer_as_device(site, options, sizes, port):
    """All cameras as the lenses of one ONVIF device; a preset that it is asked for shows in the pictures."""
    cameras = {str(camera.code): camera for camera in site.cameras.values()}
    codec = {"mjpeg": "JPEG"}.get(options.codec, options.codec.upper())

    turns = queue.Queue()

    def follow_turns():
        while True:
            camera, name = turns.get()
            camera.prepare(name)
            GLib.idle_add(site.do_preset, camera, name)

    def turn(profile, _number, name):
        turns.put((cameras[profile.split("/")[0]], name))

    threading.Thread(target=follow_turns, daemon=True).start()
    scheme = "rtsps" if options.tls else "rtsp"
    device_port, _ = onvif_device.serve(argparse.Namespace(
        port=0, search_port=0, id="6f1d2f4e-0000-4000-8000-000000000002", name="Demo cameras", codes=list(cameras),
        rtsp=f"{scheme}://{options.address}:{port}", profiles=[(kind, codec, *sizes[kind]) for kind in STREAMS],
        presets=PRESETS, user=options.user or "", password=options.password, http_login=False, clock=0,
        names_itself=None, media1=False, no_video=False, without=[], say=[], mode=None, on_preset=turn))
    return device_port


def read_commands(site, loop, until_eof):
    def on_input(channel, _condition):
        line = channel.readline()
        if not line:
            if until_eof:
                loop.quit()
            return False
        if line.strip():
            try:
                answer = site.follow(line)
            except (KeyError, TypeError, ValueError) as error:
                answer = {"error": str(error)}
            print(json.dumps(answer if answer is not None else {"done": line.strip()}), flush=True)
        return True

    channel = GLib.IOChannel.unix_new(sys.stdin.fileno())
    GLib.io_add_watch(channel, GLib.PRIORITY_DEFAULT, GLib.IOCondition.IN | GLib.IOCondition.HUP, on_input)


def main():
    options = arguments()
    Gst.init(None)
    if missing := pictures.missing_elements(options.codec):
        sys.exit(f"cameras: GStreamer lacks {', '.join(missing)}")
    server = GstRtspServer.RTSPServer()
    server.set_address(options.address)
    server.set_service(str(options.port))
    server.set_backlog(64)
    protect(server, options)
    sizes = {"main": options.main_size, "sub": options.sub_size}
    cameras = {number: Camera(number, options.first_code + number - 1, name, options.codec, sizes)
               for number, name in names(options.cameras, options.names).items()}
    for camera in cameras.values():
        permit(camera)
    site = Site(server, cameras)
    loop = GLib.MainLoop()
    for number in (signal.SIGINT, signal.SIGTERM):
        GLib.unix_signal_add(GLib.PRIORITY_HIGH, number, loop.quit)
    if server.attach(None) == 0:
        sys.exit(f"cameras: cannot listen on {options.address}:{options.port}")
    said = {"port": server.get_bound_port()}
    if options.device:
        said["device_port"] = offer_as_device(site, options, sizes, said["port"])
    print(json.dumps(said), flush=True)
    read_commands(site, loop, options.until_eof)
    if options.with_parent:
        parent = os.getppid()
        GLib.timeout_add(500, lambda: os.getppid() == parent or loop.quit())
    loop.run()


if __name__ == "__main__":
    main()
