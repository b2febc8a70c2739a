#!/usr/bin/env python3
"""Draws the icons of the plug-in, the substitute host and the client: SVG files of 20 x 20 and the four split pictures (PNG).

Run it after a change of a shape or colour; the files it writes are committed.
"""
import pathlib
import struct
import zlib

ROOT = pathlib.Path(__file__).resolve().parent.parent
PLUGIN = ROOT / "resources" / "images"
HOST = ROOT / "hostkit" / "resources" / "icons"
CLIENT = ROOT / "client" / "images"

# Both trees show their icons on both skins, so every tone keeps at least 3:1 to a white and to a dark ground.
LIGHT_SKIN, DARK_SKIN, ANY_SKIN, SELECTED = "#6a7685", "#8b95a3", "#7d8692", "#ffffff"
PLAYING, ALARM, RECORDING = "#e5484d", "#d9730d", "#e5484d"

GROUP = ('<path d="M2.5 5.5A1.5 1.5 0 0 1 4 4h3.6a1.5 1.5 0 0 1 1.1.5L10.2 6H16a1.5 1.5 0 0 1 1.5 1.5v7'
         'A1.5 1.5 0 0 1 16 16H4a1.5 1.5 0 0 1-1.5-1.5z" fill="{c}" fill-opacity="0.25" stroke="{c}" '
         'stroke-width="1.4" stroke-linejoin="round"/>')
SCREEN = '<rect x="2.5" y="3.5" width="15" height="13" rx="1.5" fill="none" stroke="{c}" stroke-width="1.4"/>'
VIEW = SCREEN + '<path d="M10 3.5v13M2.5 10h15" fill="none" stroke="{c}" stroke-width="1.4"/>'
PLAY = SCREEN + '<path d="M7.8 6.4l6.2 3.6-6.2 3.6z" fill="{c}" stroke="{c}" stroke-linejoin="round"/>'
CAMERA = ('<rect x="2" y="5.5" width="10.5" height="8.5" rx="1.5" fill="{c}" fill-opacity="0.25" stroke="{c}" '
          'stroke-width="1.4"/><path d="M12.5 8.8l4.5-2.3v6.5l-4.5-2.3z" fill="{c}" stroke="{c}" '
          'stroke-width="1.2" stroke-linejoin="round"/>')
STRIKE = '<path d="M3.5 16.5l13-13" fill="none" stroke="{c}" stroke-width="1.6" stroke-linecap="round"/>'
BADGE_PLAY = '<path d="M13 12.2l5.6 3.4-5.6 3.4z" fill="{b}"/>'
BADGE_RECORDING = '<circle cx="15.6" cy="15.6" r="3.4" fill="{b}"/>'
BADGE_ALARM = ('<path d="M4.8 10.2l4.4 8h-8.8z" fill="{a}"/><path d="M4.8 13v2.4M4.8 16.6v0.6" fill="none" '
               'stroke="#ffffff" stroke-width="1.1"/>')
USERS = ('<circle cx="7.5" cy="7" r="2.8" fill="{c}"/><path d="M2 16.5c0-3.6 2.4-5.3 5.5-5.3s5.5 1.7 5.5 5.3z" '
         'fill="{c}"/><circle cx="14" cy="7.8" r="2.1" fill="{c}"/><path d="M14.4 16.5H18c0-3-1.5-4.8-4-4.8-0.6 0'
         '-1.1 0.1-1.6 0.3 1.3 1 2 2.5 2 4.5z" fill="{c}"/>')
WALL = ('<rect x="1.8" y="4" width="16.4" height="10" rx="1" fill="none" stroke="{c}" stroke-width="1.4"/>'
        '<path d="M7.3 4v10M12.7 4v10M1.8 9h16.4M6 17h8" fill="none" stroke="{c}" stroke-width="1.4"/>')

MEDIA = {
    "previous": '<path d="M13.5 4.5v11L6.5 10z" fill="{c}"/><path d="M5 4.5v11" stroke="{c}" stroke-width="1.8"/>',
    "next": '<path d="M6.5 4.5v11l7-5.5z" fill="{c}"/><path d="M15 4.5v11" stroke="{c}" stroke-width="1.8"/>',
    "pause": '<path d="M7 4.5v11M13 4.5v11" stroke="{c}" stroke-width="2.6"/>',
    "resume": '<path d="M6.5 4v12l9-6z" fill="{c}"/>',
    "stop": '<rect x="5" y="5" width="10" height="10" rx="1" fill="{c}"/>',
}


def svg(path, shapes, color, badge=PLAYING, alarm=ALARM):
    body = shapes.replace("{c}", color).replace("{b}", badge).replace("{a}", alarm)
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text('<svg xmlns="http://www.w3.org/2000/svg" width="20" height="20" viewBox="0 0 20 20">'
                    + body + "</svg>\n")


def tree_icons(folder, tone, suffix=""):
    svg(folder / f"tree_main_group{suffix}.svg", GROUP, tone)
    svg(folder / f"tree_main_group_sel{suffix}.svg", GROUP, SELECTED)
    svg(folder / f"tree_main_view{suffix}.svg", VIEW, tone)
    svg(folder / f"tree_main_view_sel{suffix}.svg", VIEW, SELECTED)


def playing_icons(folder):
    svg(folder / "tree_main_view_play.svg", PLAY, PLAYING)
    svg(folder / "tree_main_view_play_sel.svg", PLAY, SELECTED)


def camera_icons(folder):
    for name, shapes in {
            "": CAMERA, "_offline": CAMERA + STRIKE, "_alarm": CAMERA + BADGE_ALARM, "_play": CAMERA + BADGE_PLAY,
            "_alarm_play": CAMERA + BADGE_ALARM + BADGE_PLAY, "_recording": CAMERA + BADGE_RECORDING,
            "_alarm_recording": CAMERA + BADGE_ALARM + BADGE_RECORDING}.items():
        svg(folder / f"tree_main_camera{name}.svg", shapes, ANY_SKIN, RECORDING)


def png(path, rows):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    height, width = len(rows), len(rows[0])
    raw = b"".join(b"\0" + b"".join(bytes(pixel) for pixel in row) for row in rows)
    header = struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(raw, 9))
                     + chunk(b"IEND", b""))


def split_picture(path, side, size=40):
    tone, clear = (0x7d, 0x86, 0x92, 255), (0, 0, 0, 0)
    first, last = 4, size - 5
    lines = {first + round(step * (last - first) / side) for step in range(side + 1)}
    on_line = {at for line in lines for at in (line, line - 1 if line == last else line + 1)}
    rows = [[tone if first <= x <= last and first <= y <= last and (x in on_line or y in on_line) else clear
             for x in range(size)] for y in range(size)]
    png(path, rows)


def main():
    tree_icons(PLUGIN, LIGHT_SKIN)
    tree_icons(PLUGIN, DARK_SKIN, "_d")
    playing_icons(PLUGIN)
    tree_icons(HOST, ANY_SKIN)
    playing_icons(HOST)
    camera_icons(HOST)
    svg(HOST / "tree_main_user_group.svg", USERS, ANY_SKIN)
    svg(HOST / "smart_wall.svg", WALL, ANY_SKIN)
    for name, shapes in MEDIA.items():
        svg(CLIENT / f"{name}.svg", shapes, ANY_SKIN)
    for side in (1, 2, 3, 4):
        split_picture(HOST / f"default_view_{side * side}.png", side)


if __name__ == "__main__":
    main()
