"""The number that a program can read off a picture.

A block of 6 columns and 4 rows of black and white cells stands in the top left corner of every picture, and a copy of
it in the bottom right one, so that one is left where something is painted over the other. A cell is 1/32 of the
picture's width and 1/24 of its height (10 x 10 of 320 x 240). Read the luma in the middle of each cell, row by row:
above the mean of the first two cells is 1. The 24 bits, each value's highest bit first:

    bits   what
    0-1    1 0: the mark, and what is bright and what is dark
    2-9    number of the picture, 0 to PICTURES - 1
    10-17  number of the camera, 1 to 255
    18-19  stream: 0 main, 1 sub
    20-23  check: the four-bit halves of number and camera and the stream, all joined by exclusive or with 1010

The number says when the picture was sent. Camera c sends its picture k, counted from the epoch, at (k + c % 4 / 4) / 15
seconds of the system's clock, and k % PICTURES stands in the picture: the latest such moment that is not in the future.
"""
PICTURES_PER_SECOND = 15
PICTURES = 60  # in the loop: four seconds, with a key picture a second
PHASES = 4  # cameras that follow each other send at different moments
COLUMNS, ROWS = 6, 4
WIDTH_CELLS, HEIGHT_CELLS = 32, 24  # how many cells would fill the picture
BLACK, WHITE = 16, 235


def check_of(number, camera, stream):
    return (number >> 4) ^ (number & 15) ^ (camera >> 4) ^ (camera & 15) ^ stream ^ 0b1010


def bits_of(number, camera, stream):
    text = f"10{number:08b}{camera:08b}{stream:02b}{check_of(number, camera, stream):04b}"
    return [int(bit) for bit in text]


def read_bits(bits):
    """(number, camera, stream), or None when the bits are no block of ours."""
    value = int("".join(map(str, bits)), 2)
    number, camera, stream = value >> 14 & 255, value >> 6 & 255, value >> 4 & 3
    if bits[:2] != [1, 0] or value & 15 != check_of(number, camera, stream) or number >= PICTURES or camera == 0:
        return None
    return number, camera, stream


def corner(width, height, bottom_right):
    """Left and top of a block."""
    if not bottom_right:
        return 0, 0
    return width - COLUMNS * width // WIDTH_CELLS, height - ROWS * height // HEIGHT_CELLS


def draw(plane, width, height, bits):
    """Draws both blocks into a plane of luma, a bytearray of width x height."""
    for bottom_right in (False, True):
        left, top = corner(width, height, bottom_right)
        for row in range(ROWS):
            line = bytearray()
            for column in range(COLUMNS):
                cell = (column + 1) * width // WIDTH_CELLS - column * width // WIDTH_CELLS
                line += bytes([WHITE if bits[row * COLUMNS + column] else BLACK]) * cell
            for y in range(top + row * height // HEIGHT_CELLS, top + (row + 1) * height // HEIGHT_CELLS):
                plane[y * width + left:y * width + left + len(line)] = line


def read(plane, width, height):
    """(number, camera, stream) of a plane of luma, or None."""
    for bottom_right in (False, True):
        left, top = corner(width, height, bottom_right)
        cells = [plane[(top + (2 * row + 1) * height // (2 * HEIGHT_CELLS)) * width + left +
                       (2 * column + 1) * width // (2 * WIDTH_CELLS)]
                 for row in range(ROWS) for column in range(COLUMNS)]
        between = (cells[0] + cells[1]) / 2
        found = read_bits([int(cell > between) for cell in cells])
        if found:
            return found
    return None


def number_at(seconds, camera):
    """The count k of the picture that is due at this moment of the system's clock."""
    return int(seconds * PICTURES_PER_SECOND - camera % PHASES / PHASES)


def sent_at(number, camera, now):
    """When the picture that carries this number was sent, in seconds of the system's clock."""
    latest = number_at(now, camera)
    count = latest - (latest - number) % PICTURES
    return (count + camera % PHASES / PHASES) / PICTURES_PER_SECOND
