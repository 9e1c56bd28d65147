"""The pixels of an X server's screen, as they are seen."""
import contextlib
import ctypes
import os

ALL_PLANES = ctypes.c_ulong(-1)
WHOLE_PIXELS = 2


class _Image(ctypes.Structure):
    _fields_ = [("width", ctypes.c_int), ("height", ctypes.c_int), ("offset", ctypes.c_int),
                ("format", ctypes.c_int), ("data", ctypes.c_void_p), ("byte_order", ctypes.c_int),
                ("unit", ctypes.c_int), ("bit_order", ctypes.c_int), ("pad", ctypes.c_int),
                ("depth", ctypes.c_int), ("stride", ctypes.c_int), ("bits", ctypes.c_int)]


def _library():
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    x11.XDefaultRootWindow.argtypes = [ctypes.c_void_p]
    x11.XDefaultRootWindow.restype = ctypes.c_ulong
    x11.XGetImage.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_int,
                              ctypes.c_uint, ctypes.c_uint, ctypes.c_ulong, ctypes.c_int]
    x11.XGetImage.restype = ctypes.POINTER(_Image)
    x11.XDestroyImage.argtypes = [ctypes.POINTER(_Image)]
    return x11


@contextlib.contextmanager
def environment(names):
    """Sets variables of the environment for a while, for C libraries, too."""
    before = {name: os.environ.get(name) for name in names}
    os.environ.update(names)
    yield
    for name, value in before.items():
        if value is None:
            del os.environ[name]
        else:
            os.environ[name] = value


class RootWindow:
    """Programs that read windows one by one, such as xwd, put together something else than a person
    sees where windows are blended."""

    def __init__(self, display, authority):
        self.x11 = _library()
        with environment({"XAUTHORITY": authority}):
            self.display = self.x11.XOpenDisplay(display.encode())
        if not self.display:
            raise RuntimeError(f"there is no display {display}")
        self.root = self.x11.XDefaultRootWindow(self.display)

    def read(self, width, height):
        """Returns the bytes of the pixels, four for each, and the number of bytes in a row."""
        image = self.x11.XGetImage(self.display, self.root, 0, 0, width, height, ALL_PLANES,
                                   WHOLE_PIXELS)
        found = image.contents
        if found.bits != 32:
            raise RuntimeError(f"the screen has {found.bits} bits a pixel")
        pixels = ctypes.string_at(found.data, found.stride * height)
        stride = found.stride
        self.x11.XDestroyImage(image)
        return pixels, stride
