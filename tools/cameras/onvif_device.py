#!/usr/bin/python3
"""A device of our own that answers a search and tells its streams and presets, for tests and the demo cameras.

The first line on standard output is {"port": ..., "search_port": ...}: its services stand at
http://127.0.0.1:PORT/onvif/device_service, and questions of a search are taken, sent to 127.0.0.1 alone, at the other
port. A preset that is called is a line {"preset": TOKEN, "profile": TOKEN}. It ends when its standard input does.
"""
import argparse
import base64
import datetime
import hashlib
import http.server
import json
import os
import secrets
import socket
import sys
import threading
import time
import xml.etree.ElementTree as ElementTree
from xml.sax.saxutils import escape

SOAP = "http://www.w3.org/2003/05/soap-envelope"
DEVICE = "http://www.onvif.org/ver10/device/wsdl"
MEDIA1 = "http://www.onvif.org/ver10/media/wsdl"
MEDIA2 = "http://www.onvif.org/ver20/media/wsdl"
PTZ = "http://www.onvif.org/ver20/ptz/wsdl"
ADDRESSING = "http://schemas.xmlsoap.org/ws/2004/08/addressing"
SECURITY = "http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-wssecurity-secext-1.0.xsd"
UTILITY = "http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-wssecurity-utility-1.0.xsd"
SPACES = {"s": SOAP, "tds": DEVICE, "trt": MEDIA1, "tr2": MEDIA2, "tptz": PTZ,
          "tt": "http://www.onvif.org/ver10/schema",           "ter": "http://www.onvif.org/ver10/error"}
OPEN_TO_ALL = ("GetSystemDateAndTime", "GetServices", "GetCapabilities")
TOKEN_HOLDS_SECONDS = 5
SLOW_SECONDS = 0.2
SAYING = threading.Lock()
PROFILES = (("main", "H264", 640, 480), ("sub", "H264", 320, 240), ("tiny", "JPEG", 160, 120))


def envelope(body, header=""):
    spaces = " ".join(f'xmlns:{prefix}="{space}"' for prefix, space in SPACES.items())
    return f'<?xml version="1.0" encoding="UTF-8"?><s:Envelope {spaces}>{header}<s:Body>{body}</s:Body></s:Envelope>'


def fault(subcode, text):
    return envelope("<s:Fault><s:Code><s:Value>s:Sender</s:Value>"
                    f"<s:Subcode><s:Value>ter:{subcode}</s:Value></s:Subcode>"
                    f'</s:Code><s:Reason><s:Text xml:lang="en">{escape(text)}</s:Text></s:Reason></s:Fault>')


def say(what):
    """A line of its own, whichever thread has something to say."""
    with SAYING:
        print(json.dumps(what), flush=True)


class Fault(Exception):
    def __init__(self, subcode, text):
        super().__init__(text)
        self.subcode = subcode


class Device:
    """What the device answers; knows nothing of how the questions come."""

    def __init__(self, options):
        self.options = options
        self.used = set()  # nonces
        self.port = 0

    def now(self):
        return datetime.datetime.fromtimestamp(time.time() + self.options.clock, datetime.timezone.utc)

    def url(self, service):
        host = self.options.names_itself or "127.0.0.1"
        return f"http://{host}:{self.port}/onvif/{service}"

    def check_token(self, root):
        path = f"{{{SOAP}}}Header/{{{SECURITY}}}Security/{{{SECURITY}}}UsernameToken"
        token = root.find(path)
        if token is None:
            raise Fault("NotAuthorized", "Sender not authorized")
        name = token.findtext(f"{{{SECURITY}}}Username")
        digest = token.findtext(f"{{{SECURITY}}}Password")
        nonce = token.findtext(f"{{{SECURITY}}}Nonce")
        created = token.findtext(f"{{{UTILITY}}}Created")
        wanted = hashlib.sha1(base64.b64decode(nonce) + created.encode() + self.options.password.encode()).digest()
        made = datetime.datetime.fromisoformat(created.replace("Z", "+00:00"))
        is_fresh = abs((self.now() - made).total_seconds()) < TOKEN_HOLDS_SECONDS and nonce not in self.used
        self.used.add(nonce)
        if name != self.options.user or base64.b64decode(digest) != wanted or not is_fresh:
            raise Fault("NotAuthorized", "Sender not authorized")

    def answer(self, text, is_known):
        """(HTTP status, envelope). `is_known`: the user was named by HTTP already."""
        root = ElementTree.fromstring(text)
        request = root.find(f"{{{SOAP}}}Body")[0]
        space, name = request.tag[1:].split("}")
        if name in self.options.say:
            say({"asked": name})
        try:
            if self.options.user and not is_known and name not in OPEN_TO_ALL:
                self.check_token(root)
            handler = getattr(self, f"on_{name}", None)
            if handler is None or name in self.options.without:
                raise Fault("ActionNotSupported", f"{name} is not supported")
            return 200, envelope(handler(request, space))
        except Fault as error:
            return 400, fault(error.subcode, str(error))

    def on_GetSystemDateAndTime(self, _request, _space):
        now = self.now()
        return ("<tds:GetSystemDateAndTimeResponse><tds:SystemDateAndTime><tt:DateTimeType>NTP</tt:DateTimeType>"
                "<tt:UTCDateTime>"
                f"<tt:Time><tt:Hour>{now.hour}</tt:Hour><tt:Minute>{now.minute}</tt:Minute>"
                f"<tt:Second>{now.second}</tt:Second></tt:Time>"
                f"<tt:Date><tt:Year>{now.year}</tt:Year><tt:Month>{now.month}</tt:Month>"
                f"<tt:Day>{now.day}</tt:Day></tt:Date>"
                "</tt:UTCDateTime></tds:SystemDateAndTime></tds:GetSystemDateAndTimeResponse>")

    def on_GetServices(self, _request, _space):
        spaces = {DEVICE: "device_service", MEDIA1: "media", MEDIA2: "media2", PTZ: "ptz"}
        if self.options.media1:
            del spaces[MEDIA2]
        return "<tds:GetServicesResponse>" + "".join(
            f"<tds:Service><tds:Namespace>{space}</tds:Namespace><tds:XAddr>{self.url(path)}</tds:XAddr></tds:Service>"
            for space, path in spaces.items()) + "</tds:GetServicesResponse>"

    def on_GetCapabilities(self, _request, _space):
        return ("<tds:GetCapabilitiesResponse><tds:Capabilities>"
                f"<tt:Media><tt:XAddr>{self.url('media')}</tt:XAddr></tt:Media>"
                f"<tt:PTZ><tt:XAddr>{self.url('ptz')}</tt:XAddr></tt:PTZ>"
                "</tds:Capabilities></tds:GetCapabilitiesResponse>")

    def on_GetDeviceInformation(self, _request, _space):
        return ("<tds:GetDeviceInformationResponse><tds:Manufacturer>Tarn</tds:Manufacturer>"
                "<tds:Model>Test camera</tds:Model>"
                "</tds:GetDeviceInformationResponse>")

    def scopes(self):
        name = "".join(f"%{byte:02X}" for byte in self.options.name.encode())
        return [f"onvif://www.onvif.org/name/{name}", "onvif://www.onvif.org/hardware/Test%20camera",
                "onvif://www.onvif.org/location/North%20gate", "onvif://www.onvif.org/Profile/T"]

    def on_GetScopes(self, _request, _space):
        return "<tds:GetScopesResponse>" + "".join(
            f"<tds:Scopes><tt:ScopeDef>Fixed</tt:ScopeDef><tt:ScopeItem>{scope}</tt:ScopeItem></tds:Scopes>"
            for scope in self.scopes()) + "</tds:GetScopesResponse>"

    def profiles(self):
        """Token, lens, codec, width and height; the smaller come first, as with many devices."""
        if self.options.no_video:
            return []
        return [(f"{lens}/{kind}", lens, codec, width, height)
                for lens in self.options.codes for kind, codec, width, height in reversed(self.options.profiles)]

    def on_GetProfiles(self, request, space):
        if space == MEDIA2 and not [child for child in request if child.tag.endswith("Type")]:
            raise Fault("InvalidArgVal", "no pieces of the profiles were asked for")
        return self.profiles2() if space == MEDIA2 else self.profiles1()

    def profiles2(self):
        text = "".join(
            f'<tr2:Profiles token="{token}"><tr2:Name>{token}</tr2:Name><tr2:Configurations>'
            f'<tr2:VideoSource token="v{lens}"><tt:SourceToken>lens{lens}</tt:SourceToken></tr2:VideoSource>'
            f'<tr2:VideoEncoder token="e{token}"><tt:Encoding>{codec}</tt:Encoding>'
            f"<tt:Resolution><tt:Width>{width}</tt:Width><tt:Height>{height}</tt:Height></tt:Resolution>"
            f'</tr2:VideoEncoder><tr2:PTZ token="p{lens}"/>'
            "</tr2:Configurations></tr2:Profiles>" for token, lens, codec, width, height in self.profiles())
        return f"<tr2:GetProfilesResponse>{text}</tr2:GetProfilesResponse>"

    def profiles1(self):
        text = "".join(
            f'<trt:Profiles token="{token}"><tt:Name>{token}</tt:Name>'
            f'<tt:VideoSourceConfiguration token="v{lens}"><tt:SourceToken>lens{lens}</tt:SourceToken>'
            f'</tt:VideoSourceConfiguration><tt:VideoEncoderConfiguration token="e{token}">'
            f"<tt:Encoding>{codec}</tt:Encoding>"
            f"<tt:Resolution><tt:Width>{width}</tt:Width><tt:Height>{height}</tt:Height></tt:Resolution>"
            f'</tt:VideoEncoderConfiguration><tt:PTZConfiguration token="p{lens}"/></trt:Profiles>'
            for token, lens, codec, width, height in self.profiles())
        return f"<trt:GetProfilesResponse>{text}</trt:GetProfilesResponse>"

    def on_GetStreamUri(self, request, space):
        token = request.findtext(f"{{{space}}}ProfileToken")
        if token not in [profile[0] for profile in self.profiles()]:
            raise Fault("NoProfile", "no such profile")
        uri = f"<tt:Uri>{self.options.rtsp}/{token}</tt:Uri>"
        if space == MEDIA2:
            return f"<tr2:GetStreamUriResponse>{uri.replace('tt:', 'tr2:')}</tr2:GetStreamUriResponse>"
        return f"<trt:GetStreamUriResponse><trt:MediaUri>{uri}</trt:MediaUri></trt:GetStreamUriResponse>"

    def on_GetPresets(self, _request, _space):
        return "<tptz:GetPresetsResponse>" + "".join(
            f'<tptz:Preset token="{number}"><tt:Name>{escape(name)}</tt:Name></tptz:Preset>'
            for number, name in enumerate(self.options.presets, 1)) + "</tptz:GetPresetsResponse>"

    def on_GotoPreset(self, request, _space):
        token = request.findtext(f"{{{PTZ}}}PresetToken")
        if not token.isdigit() or not 1 <= int(token) <= len(self.options.presets):
            raise Fault("NoToken", "no such preset")
        profile = request.findtext(f"{{{PTZ}}}ProfileToken")
        self.options.on_preset(profile, int(token), self.options.presets[int(token) - 1])
        return "<tptz:GotoPresetResponse/>"

    def match(self, text):
        """The answer to a question of a search; None when it asks for something else."""
        root = ElementTree.fromstring(text)
        message = root.findtext(f"{{{SOAP}}}Header/{{{ADDRESSING}}}MessageID")
        if message is None:
            return None
        header = f'<s:Header><a:RelatesTo xmlns:a="{ADDRESSING}">{escape(message)}</a:RelatesTo></s:Header>'
        return envelope(
            '<d:ProbeMatches xmlns:d="http://schemas.xmlsoap.org/ws/2005/04/discovery"><d:ProbeMatch>'
            f'<a:EndpointReference xmlns:a="{ADDRESSING}"><a:Address>urn:uuid:{self.options.id}</a:Address>'
            "</a:EndpointReference><d:Types>dn:NetworkVideoTransmitter</d:Types>"
            f"<d:Scopes>{' '.join(self.scopes())}</d:Scopes>"
            f"<d:XAddrs>http://198.51.100.7/onvif/device_service {self.url('device_service')}</d:XAddrs>"
            "<d:MetadataVersion>1</d:MetadataVersion></d:ProbeMatch></d:ProbeMatches>", header)


class HttpLogin:
    """Digest by MD5, as devices of today ask for it."""

    REALM = "camera"

    def __init__(self, options):
        self.options = options
        self.nonce = secrets.token_hex(8)

    def question(self):
        return f'Digest realm="{self.REALM}", qop="auth", nonce="{self.nonce}", algorithm=MD5'

    def is_right(self, header, method):
        if not header.startswith("Digest "):
            return False
        fields = dict(part.strip().split("=", 1) for part in header[7:].split(","))
        fields = {key: value.strip('"') for key, value in fields.items()}

        def md5(text):
            return hashlib.md5(text.encode()).hexdigest()

        secret = md5(f"{self.options.user}:{self.REALM}:{self.options.password}")
        what = md5(f"{method}:{fields['uri']}")
        wanted = md5(f"{secret}:{self.nonce}:{fields['nc']}:{fields['cnonce']}:{fields['qop']}:{what}")
        return fields.get("username") == self.options.user and fields.get("response") == wanted


class Handler(http.server.BaseHTTPRequestHandler):
    device = login = None
    protocol_version = "HTTP/1.1"
    wbufsize = -1  # an answer in one piece, or each waits 40 ms for the other side's acknowledgement

    def reply(self, status, body, headers=()):
        body = body.encode()
        self.send_response(status)
        self.send_header("Content-Type", "application/soap+xml; charset=utf-8")
        self.send_header("Content-Length", str(len(body)))
        for key, value in headers:
            self.send_header(key, value)
        self.end_headers()
        self.wfile.write(body)

    def do_POST(self):
        # Who asks may send the rest only when what came is acknowledged, which else takes 40 ms.
        self.connection.setsockopt(socket.IPPROTO_TCP, socket.TCP_QUICKACK, 1)
        text = self.rfile.read(int(self.headers.get("Content-Length", 0)))
        mode = self.device.options.mode
        if mode == "hang":
            time.sleep(60)
        elif mode == "garbage":
            self.reply(200, "<html><body>Router</body></html>")
        elif mode == "endless":
            self.send_response(200)
            self.end_headers()
            self.write_without_end()
        elif mode == "redirect":
            self.reply(302, "", [("Location", "http://198.51.100.7/")])
        elif mode == "basic":
            self.reply(401, "", [("WWW-Authenticate", 'Basic realm="camera"')])
        else:
            if mode == "slow":
                time.sleep(SLOW_SECONDS)
            self.answer(text)

    def write_without_end(self):
        self.close_connection = True
        try:
            while True:
                self.wfile.write(b"<a>" * 10000)
        except OSError:
            pass  # the other side has had enough

    def answer(self, text):
        is_known = False
        if self.device.options.http_login and not any(f":{name}" in text.decode() for name in OPEN_TO_ALL):
            is_known = self.login.is_right(self.headers.get("Authorization", ""), "POST")
            if not is_known:
                self.reply(401, "", [("WWW-Authenticate", self.login.question())])
                return
        self.reply(*self.device.answer(text, is_known))

    def log_message(self, *_arguments):
        pass


def answer_searches(device, port):
    receiver = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
    receiver.bind(("127.0.0.1", port))

    def serve():
        while True:
            text, sender = receiver.recvfrom(65536)
            for noise in (b"", b"<no xml", b"<!DOCTYPE a [<!ENTITY b 'b'>]><a>&b;</a>"):
                receiver.sendto(noise, sender)
            found = device.match(text)
            if found:
                receiver.sendto(found.encode(), sender)
                receiver.sendto(found.encode(), sender)  # as from a device in two networks

    threading.Thread(target=serve, daemon=True).start()
    return receiver.getsockname()[1]


def serve(options):
    """Starts the services in threads of their own and tells the ports. `codes` are the lenses, as the paths of the
    streams begin; `on_preset` is called with profile, number and name in one of the threads."""
    device = Device(options)
    handler = type("DeviceHandler", (Handler,), {"device": device, "login": HttpLogin(options)})
    web = http.server.ThreadingHTTPServer(("127.0.0.1", options.port), handler)
    web.daemon_threads = True
    device.port = web.server_address[1]
    threading.Thread(target=web.serve_forever, daemon=True).start()
    return device.port, answer_searches(device, options.search_port)


def password():
    """By a variable: everyone may read how a program was called."""
    return os.environ.get("CAMERAS_PASSWORD", "")


def arguments():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--port", type=int, default=0)
    parser.add_argument("--search-port", type=int, default=0)
    parser.add_argument("--id", default="6f1d2f4e-0000-4000-8000-000000000001")
    parser.add_argument("--name", default="Gate & <yard>")
    parser.add_argument("--rtsp", default="rtsp://127.0.0.1:8554", help="where the streams stand")
    parser.add_argument("--lenses", type=int, default=1)
    parser.add_argument("--presets", nargs="*", default=["Wide", "Close up"])
    parser.add_argument("--user", default="", help="asks for this name and the password in CAMERAS_PASSWORD")
    parser.add_argument("--http-login", action="store_true", help="asks for the user by HTTP digest as well")
    parser.add_argument("--clock", type=float, default=0, help="seconds that its clock is ahead")
    parser.add_argument("--names-itself", help="a host that it believes to be")
    parser.add_argument("--media1", action="store_true", help="has the older service of media only")
    parser.add_argument("--no-video", action="store_true")
    parser.add_argument("--without", nargs="*", default=[], help="calls that it does not know")
    parser.add_argument("--say", nargs="*", default=[], help="calls that it prints a line {\"asked\": NAME} for")
    parser.add_argument("--mode", choices=("hang", "slow", "garbage", "endless", "redirect", "basic"),
                        help="answers like that")
    options = parser.parse_args()
    options.password = password()
    options.codes = range(1, options.lenses + 1)
    options.profiles = PROFILES
    return options


def main():
    def tell(profile, number, _name):
        say({"preset": number, "profile": profile})

    options = arguments()
    options.on_preset = tell
    port, search_port = serve(options)
    say({"port": port, "search_port": search_port})
    sys.stdin.read()


if __name__ == "__main__":
    main()
