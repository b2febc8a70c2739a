#!/usr/bin/env python3
"""Draws the icons of the plug-in, the substitute host and the client: SVG files, most of
20 x 20, and the four split pictures (PNG).

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
LIGHT_BAR, DARK_BAR, LIGHT_GROUND, DARK_GROUND = "#3d4652", "#d5d9de", "#ffffff", "#202328"
PLAYING, ALARM, RECORDING, FAVORITE = "#e5484d", "#d9730d", "#e5484d", "#b07d12"

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
STAR = ('<path d="M10 2.6l2.3 4.7 5.2 0.7-3.8 3.6 0.9 5.2-4.6-2.5-4.6 2.5 0.9-5.2-3.8-3.6 5.2-0.7z" fill="{f}" '
        'stroke="{c}" stroke-width="1.3" stroke-linejoin="round"/>')
BADGE_PLAY = '<path d="M13 12.2l5.6 3.4-5.6 3.4z" fill="{b}"/>'
BADGE_RECORDING = '<circle cx="15.6" cy="15.6" r="3.4" fill="{b}"/>'
BADGE_ALARM = ('<path d="M4.8 10.2l4.4 8h-8.8z" fill="{a}"/><path d="M4.8 13v2.4M4.8 16.6v0.6" fill="none" '
               'stroke="#ffffff" stroke-width="1.1"/>')
USERS = ('<circle cx="7.5" cy="7" r="2.8" fill="{c}"/><path d="M2 16.5c0-3.6 2.4-5.3 5.5-5.3s5.5 1.7 5.5 5.3z" '
         'fill="{c}"/><circle cx="14" cy="7.8" r="2.1" fill="{c}"/><path d="M14.4 16.5H18c0-3-1.5-4.8-4-4.8-0.6 0'
         '-1.1 0.1-1.6 0.3 1.3 1 2 2.5 2 4.5z" fill="{c}"/>')
WALL = ('<rect x="1.8" y="4" width="16.4" height="10" rx="1" fill="none" stroke="{c}" stroke-width="1.4"/>'
        '<path d="M7.3 4v10M12.7 4v10M1.8 9h16.4M6 17h8" fill="none" stroke="{c}" stroke-width="1.4"/>')

PLUS_BADGE = ('<circle cx="14.6" cy="14.6" r="4.6" fill="{c}"/><path d="M14.6 12.2v4.8M12.2 14.6h4.8" stroke="{g}" '
              'stroke-width="1.4" stroke-linecap="round"/>')
# Under the cursor stands whatever the windows show: the picture brings its own ground.
ADD_RESOURCE = ('<rect x="1" y="1" width="18" height="18" rx="3" fill="#ffffff" stroke="#1d6b3c" stroke-width="1.4"/>'
                '<path d="M10 5v10M5 10h10" fill="none" stroke="#1d6b3c" stroke-width="2" stroke-linecap="round"/>')
EMPTY = ('<ellipse cx="60" cy="100" rx="38" ry="5" fill="{c}" fill-opacity="0.18"/>'
         '<rect x="22" y="24" width="76" height="54" rx="6" fill="{c}" fill-opacity="0.12" stroke="{c}" '
         'stroke-width="3"/>'
         '<path d="M60 24v54M22 51h76" fill="none" stroke="{c}" stroke-width="2.4" stroke-dasharray="5 5"/>'
         '<path d="M52 78l-4 16h24l-4-16" fill="{c}" fill-opacity="0.25" stroke="{c}" '
         'stroke-width="3" stroke-linejoin="round"/>'
         '<circle cx="92" cy="74" r="15" fill="{g}" stroke="{c}" stroke-width="3"/>'
         '<path d="M103 85l9 9" stroke="{c}" stroke-width="5" stroke-linecap="round"/>'
         '<path d="M86.5 74h11" stroke="{c}" stroke-width="2.6" stroke-linecap="round"/>')

LINE = 'fill="none" stroke="{c}" stroke-width="1.5" stroke-linecap="round" stroke-linejoin="round"'
# The bar of the panel: shapes on the skin's ground, {g} being that ground.
BAR = {
    "bar_add_group": GROUP + PLUS_BADGE,
    "bar_add_plan": VIEW + PLUS_BADGE,
    "bar_edit": f'<path d="M4 16l0.8-3.6L13.4 3.8a1.4 1.4 0 0 1 2 0l0.8 0.8a1.4 1.4 0 0 1 0 2L7.6 15.2z'
                f'M12 5.4l2.6 2.6" {LINE}/>',
    "bar_delete": f'<path d="M3.5 5.5h13M8 5.5V3.5h4v2M5 5.5l0.7 11h8.6l0.7-11M8.4 8.5v5M11.6 8.5v5" {LINE}/>',
    "bar_search": f'<circle cx="8.6" cy="8.6" r="5.1" {LINE}/><path d="M12.5 12.5l4.3 4.3" {LINE}/>',
    "row_more": '<circle cx="4.5" cy="10" r="1.6" fill="{c}"/><circle cx="10" cy="10" r="1.6" fill="{c}"/>'
                '<circle cx="15.5" cy="10" r="1.6" fill="{c}"/>',
}
WINDOW = {
    "drop_down": f'<path d="M5.5 8l4.5 4.5L14.5 8" {LINE}/>',
    "save": f'<path d="M4 3.5h9.5l3 3V16.5H3.5V4z" {LINE}/><path d="M6.5 3.5v4h6v-4M6.5 16.5v-5h7v5" {LINE}/>',
    "history": f'<path d="M3.6 7.2A7 7 0 1 1 3 10M3.2 3.6v3.8H7" {LINE}/><path d="M10 6.2v4l2.8 1.8" {LINE}/>',
    "menu": f'<path d="M3.5 5.5h13M3.5 10h13M3.5 14.5h13" {LINE}/>',
    "messages": f'<path d="M3.5 4.5h13v9H9l-3.5 3v-3h-2z" {LINE}/><path d="M6.5 7.6h7M6.5 10.4h4.5" {LINE}/>',
    "settings": f'<path d="M3.5 6.5h2.4M10.1 6.5h6.4M3.5 13.5h6.4M14.1 13.5h2.4" {LINE}/>'
                f'<circle cx="8" cy="6.5" r="2.1" {LINE}/><circle cx="12" cy="13.5" r="2.1" {LINE}/>',
    "show_in_tree": f'<path d="M3.5 4.5h8M5.5 4.5V15h3M5.5 9.2h3M11 9.2h5.5M11 15h5.5" {LINE}/>',
    "user": f'<circle cx="10" cy="6.6" r="3.1" {LINE}/>'
            f'<path d="M3.8 16.8c0-3.6 2.7-5.4 6.2-5.4s6.2 1.8 6.2 5.4z" {LINE}/>',
}

# The desktop's panels may be light or dark: the picture brings its own ground. Filled shapes, for 16 pixels as well.
WINDOW_ICON = ('<rect x="1" y="1" width="18" height="18" rx="4" fill="#b5232a"/>'
               '<rect x="4" y="5" width="7.4" height="6" rx="0.8" fill="#ffffff"/>'
               '<rect x="12.6" y="5" width="3.4" height="6" rx="0.8" fill="#ffffff" fill-opacity="0.75"/>'
               '<rect x="4" y="12.2" width="3.4" height="3.4" rx="0.8" fill="#ffffff" fill-opacity="0.75"/>'
               '<rect x="8.6" y="12.2" width="7.4" height="3.4" rx="0.8" fill="#ffffff" fill-opacity="0.75"/>'
               '<path d="M6.6 6.4l3 1.6-3 1.6z" fill="#b5232a"/>')

MEDIA = {
    "previous": '<path d="M13.5 4.5v11L6.5 10z" fill="{c}"/><path d="M5 4.5v11" stroke="{c}" stroke-width="1.8"/>',
    "next": '<path d="M6.5 4.5v11l7-5.5z" fill="{c}"/><path d="M15 4.5v11" stroke="{c}" stroke-width="1.8"/>',
    "pause": '<path d="M7 4.5v11M13 4.5v11" stroke="{c}" stroke-width="2.6"/>',
    "resume": '<path d="M6.5 4v12l9-6z" fill="{c}"/>',
    "stop": '<rect x="5" y="5" width="10" height="10" rx="1" fill="{c}"/>',
}


def svg(path, shapes, color, badge=PLAYING, alarm=ALARM, ground="#ffffff", side=20):
    body = shapes.replace("{c}", color).replace("{b}", badge).replace("{a}", alarm).replace("{g}", ground)
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(f'<svg xmlns="http://www.w3.org/2000/svg" width="{side}" height="{side}" '
                    f'viewBox="0 0 {side} {side}">'
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


# What the camera tree shows beyond the common icons: rows that are selected, and the star of favourites.
def camera_tree_icons(folder):
    svg(folder / "tree_main_camera_sel.svg", CAMERA, SELECTED)
    svg(folder / "tree_main_camera_offline_sel.svg", CAMERA + STRIKE, SELECTED)
    for name, fill in {"favorite": "{c}", "favorite_off": "none"}.items():
        svg(folder / f"{name}.svg", STAR.replace("{f}", fill), FAVORITE)
        svg(folder / f"{name}_sel.svg", STAR.replace("{f}", fill), SELECTED)


def bar_icons():
    for name, shapes in BAR.items():
        svg(PLUGIN / f"{name}.svg", shapes, LIGHT_BAR, ground=LIGHT_GROUND)
        svg(PLUGIN / f"{name}_d.svg", shapes, DARK_BAR, ground=DARK_GROUND)


def empty_pictures():
    svg(HOST / "default_no_data.svg", EMPTY, LIGHT_SKIN, ground=LIGHT_GROUND, side=120)
    svg(HOST / "default_no_data_d.svg", EMPTY, DARK_SKIN, ground=DARK_GROUND, side=120)


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
    camera_tree_icons(HOST)
    svg(HOST / "tree_main_user_group.svg", USERS, ANY_SKIN)
    svg(HOST / "smart_wall.svg", WALL, ANY_SKIN)
    for name, shapes in MEDIA.items():
        svg(CLIENT / f"{name}.svg", shapes, ANY_SKIN)
    bar_icons()
    empty_pictures()
    for folder in (PLUGIN, HOST):
        svg(folder / "monitoring_window_add_resource.svg", ADD_RESOURCE, ANY_SKIN)
    svg(HOST / "search.svg", BAR["bar_search"], ANY_SKIN)
    for name, shapes in WINDOW.items():
        svg(CLIENT / f"{name}.svg", shapes, ANY_SKIN)
    svg(CLIENT / "window_icon.svg", WINDOW_ICON, ANY_SKIN)
    for side in (1, 2, 3, 4):
        split_picture(HOST / f"default_view_{side * side}.png", side)


if __name__ == "__main__":
    main()
