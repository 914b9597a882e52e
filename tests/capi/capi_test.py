#!/usr/bin/env python3
"""The C interface from Python: ctypes over the shared library, numpy arrays as
frames, results against numpy formulas of what each function promises.

Usage: capi_test.py LIBRARY [unittest arguments]
"""
import ctypes as C
import math
import sys
import unittest

import numpy as np

ZX_OK, ZX_E_NOTSUPPORTED, ZX_E_FAIL = 0, -2, -9
RECT, CIRCLE = 1, 2
MONO, RED, GREEN, BLUE = 0, 1, 2, 3


class Frame(C.Structure):
    _fields_ = [('width', C.c_uint32), ('height', C.c_uint32), ('bits', C.c_uint32), ('components', C.c_uint32),
                ('data_size', C.c_uint64), ('data', C.c_void_p)]


class Probe(C.Structure):
    _fields_ = [(n, C.c_uint32) for n in ('type', 'left', 'top', 'width', 'height')]


class HistogramInfo(C.Structure):
    _fields_ = [('max_bits', C.c_int32), ('has_mono', C.c_int32), ('has_colour', C.c_int32), ('mono', C.c_int32),
                ('pixel_count', C.c_uint32), ('bin_count', C.c_uint32), ('clipped', C.c_int32)]


class LutPropsI(C.Structure):
    _fields_ = [('gain', C.c_double), ('offset', C.c_double), ('gamma', C.c_double)]


def load(path):
    lib = C.CDLL(path)
    P = C.c_void_p
    sigs = {
        'zxc_histogram_create': [C.c_int32, C.c_int32, C.c_int32, C.POINTER(P)],
        'zxc_histogram_set_clip_limits': [P, C.POINTER(C.c_uint32), C.c_uint32],
        'zxc_histogram_compute': [P, C.POINTER(Frame), C.POINTER(Probe)],
        'zxc_histogram_get_info': [P, C.POINTER(HistogramInfo)],
        'zxc_histogram_get_bins': [P, C.c_uint32, C.POINTER(C.c_uint32), C.c_uint32],
        'zxc_accurate_auto_white': [C.POINTER(Frame), C.POINTER(Probe), C.c_double, C.c_double, C.c_double,
                                    C.POINTER(C.c_double), C.POINTER(C.c_double), C.POINTER(C.c_double),
                                    C.POINTER(C.c_uint32)],
        'zxc_mono_lut_create': [C.c_int32, C.POINTER(P)],
        'zxc_mono_lut_update': [P, C.POINTER(LutPropsI), C.c_int32, C.c_int32],
        'zxc_mono_lut_apply': [P, C.POINTER(Frame)],
        'zxc_bayer_to_rgb': [C.POINTER(Frame), P, C.c_uint64, C.c_int32],
        'zxc_mono_binning': [C.POINTER(Frame), P, C.c_uint64, C.c_uint32],
        'zxc_bayer_binning': [C.POINTER(Frame), P, C.c_uint64, C.c_int32, C.c_uint32],
    }
    for name, args in sigs.items():
        f = getattr(lib, name)
        f.argtypes, f.restype = args, C.c_int
    for name in ('zxc_histogram_destroy', 'zxc_mono_lut_destroy'):
        getattr(lib, name).argtypes, getattr(lib, name).restype = [P], None
    return lib


LIB = None


def frame(a, bits):
    """The description of a C-contiguous uint8/uint16 array: (height, width) or (height, width, 3)."""
    assert a.flags['C_CONTIGUOUS'] and a.dtype == (np.uint16 if bits > 8 else np.uint8)
    comp = 3 if a.ndim == 3 else 1
    return Frame(a.shape[1], a.shape[0], bits, comp, a.nbytes, a.ctypes.data)


def random_frame(rng, h, w, bits, comp=1, top=None):
    shape = (h, w, 3) if comp == 3 else (h, w)
    top = (1 << bits) - 1 if top is None else top
    return rng.integers(0, top + 1, size=shape).astype(np.uint16 if bits > 8 else np.uint8)


def circle_mask(h, w, cx, cy, r):
    """The pixels a circle probe covers: rows of the bounding square, each a run of
    round-half-up(sqrt(r^2 - dy^2)) to either side, clamped into the square."""
    m = np.zeros((h, w), bool)
    left, right = max(cx - r, 0), min(cx + r, w - 1)
    for y in range(max(cy - r, 0), min(cy + r, h - 1) + 1):
        half = int(math.sqrt(r * r - (y - cy) ** 2) + 0.5)
        x0 = min(max(cx - half, left), right)
        x1 = max(min(cx + half, right), left)
        m[y, x0:x1 + 1] = True
    return m


class Histograms(unittest.TestCase):
    def histogram(self, a, bits, probe=None, clip=None, max_bits=None):
        h = C.c_void_p()
        comp = 3 if a.ndim == 3 else 1
        self.assertEqual(LIB.zxc_histogram_create(max_bits or bits, comp == 1, comp == 3, C.byref(h)), ZX_OK)
        self.addCleanup(LIB.zxc_histogram_destroy, h)
        if clip is not None:
            arr = (C.c_uint32 * len(clip))(*clip)
            self.assertEqual(LIB.zxc_histogram_set_clip_limits(h, arr, len(clip)), ZX_OK)
        f = frame(a, bits)
        self.assertEqual(LIB.zxc_histogram_compute(h, C.byref(f), C.byref(probe) if probe else None), ZX_OK)
        info = HistogramInfo()
        LIB.zxc_histogram_get_info(h, C.byref(info))
        out = {}
        for c in ((MONO,) if comp == 1 else (RED, GREEN, BLUE)):
            bins = np.zeros(info.bin_count, np.uint32)
            self.assertEqual(LIB.zxc_histogram_get_bins(h, c, bins.ctypes.data_as(C.POINTER(C.c_uint32)),
                                                        bins.size), ZX_OK)
            out[c] = bins
        return info, out

    def test_rectangle_circle_and_clip_count_what_numpy_counts(self):
        rng = np.random.default_rng(1)
        a = random_frame(rng, 29, 41, 12)
        info, bins = self.histogram(a, 12, Probe(RECT, 3, 5, 20, 30))
        self.assertEqual(info.pixel_count, 24 * 20)
        np.testing.assert_array_equal(bins[MONO], np.bincount(a[5:, 3:23].ravel(), minlength=4096))

        info, bins = self.histogram(a, 12, Probe(CIRCLE, 38, 4, 7, 0))
        m = circle_mask(29, 41, 38, 4, 7)
        self.assertEqual(info.pixel_count, m.sum())
        np.testing.assert_array_equal(bins[MONO], np.bincount(a[m], minlength=4096))

        info, bins = self.histogram(a, 12, clip=[1000])
        self.assertEqual(info.clipped, 1)
        np.testing.assert_array_equal(bins[MONO], np.bincount(np.minimum(a, 1000).ravel(), minlength=4096))

    def test_colour_channels_follow_blue_green_red_memory_order(self):
        rng = np.random.default_rng(2)
        a = random_frame(rng, 17, 23, 8, comp=3)
        a[..., 0] //= 4  # blue darker, red brighter: a swapped channel shows
        a[..., 2] = 128 + a[..., 2] // 2
        info, bins = self.histogram(a, 8, clip=[40, 255, 200])
        self.assertEqual((info.mono, info.pixel_count, info.bin_count), (0, 17 * 23, 256))
        np.testing.assert_array_equal(bins[BLUE], np.bincount(np.minimum(a[..., 0], 40).ravel(), minlength=256))
        np.testing.assert_array_equal(bins[GREEN], np.bincount(a[..., 1].ravel(), minlength=256))
        np.testing.assert_array_equal(bins[RED], np.bincount(np.minimum(a[..., 2], 200).ravel(), minlength=256))

    def test_deep_frame_is_shifted_into_smaller_histogram(self):
        a = np.array([[0, 15, 16, 4095]], np.uint16)
        info, bins = self.histogram(a, 12, max_bits=8)
        self.assertEqual(info.bin_count, 256)
        self.assertEqual([bins[MONO][i] for i in (0, 1, 255)], [2, 1, 1])


class PixelFunctions(unittest.TestCase):
    def test_mono_table_maps_every_level_by_the_display_formula(self):
        lut = C.c_void_p()
        self.assertEqual(LIB.zxc_mono_lut_create(8, C.byref(lut)), ZX_OK)
        self.addCleanup(LIB.zxc_mono_lut_destroy, lut)
        for gain, offset, gamma in ((1.0, 0.0, 0.5), (1.3, -0.02, 0.8)):
            ramp = np.arange(256, dtype=np.uint8).reshape(16, 16).copy()
            self.assertEqual(LIB.zxc_mono_lut_update(lut, C.byref(LutPropsI(gain, offset, gamma)), 8, 0), ZX_OK)
            self.assertEqual(LIB.zxc_mono_lut_apply(lut, C.byref(frame(ramp, 8))), ZX_OK)
            x = np.maximum((np.arange(256) + 255 * offset) * gain / 255, 0.0)
            want = np.clip(np.trunc(x ** gamma * 255 + 0.5), 0, 255)
            np.testing.assert_array_equal(ramp.ravel(), want)
        self.assertEqual(LIB.zxc_mono_lut_update(lut, C.byref(LutPropsI(1.0, 0.0, 0.5)), 8, 0), ZX_OK)
        one = np.array([[64]], np.uint8)
        LIB.zxc_mono_lut_apply(lut, C.byref(frame(one, 8)))
        self.assertEqual(one[0, 0], 128)

    def test_binning_and_bayer_cells(self):
        rng = np.random.default_rng(3)
        raw = random_frame(rng, 18, 26, 16)
        dst = np.zeros((9, 13), np.uint16)
        self.assertEqual(LIB.zxc_mono_binning(C.byref(frame(dst, 16)), raw.ctypes.data, raw.nbytes, 2), ZX_OK)
        r = raw.astype(np.uint32)
        np.testing.assert_array_equal(dst, (r[0::2, 0::2] + r[0::2, 1::2] + r[1::2, 0::2] + r[1::2, 1::2] + 2) >> 2)

        raw8 = random_frame(rng, 10, 14, 8).astype(np.uint32)
        a, b, c, d = raw8[0::2, 0::2], raw8[0::2, 1::2], raw8[1::2, 0::2], raw8[1::2, 1::2]
        cells = {1: (a, (b + c) >> 1, d), 2: (b, (a + d) >> 1, c), 3: (d, (b + c) >> 1, a), 4: (c, (a + d) >> 1, b)}
        src = raw8.astype(np.uint8)
        for t, (blue, green, red) in cells.items():
            out = np.zeros((5, 7, 3), np.uint8)
            self.assertEqual(LIB.zxc_bayer_binning(C.byref(frame(out, 8)), src.ctypes.data, src.nbytes, t, 2), ZX_OK)
            np.testing.assert_array_equal(out, np.stack([blue, green, red], axis=-1), err_msg='type %d' % t)

    def test_uniform_raw_frame_demosaics_to_its_value(self):
        flat = np.full((5, 7), 1234, np.uint16)
        out = np.zeros((5, 7, 3), np.uint16)
        LIB.zxc_bayer_to_rgb(C.byref(frame(out, 12)), flat.ctypes.data, flat.nbytes, 2)
        self.assertTrue((out == 1234).all())


class Refusals(unittest.TestCase):
    def test_bad_arguments_get_their_status_and_touch_nothing(self):
        h, lut = C.c_void_p(), C.c_void_p()
        self.assertEqual(LIB.zxc_histogram_create(8, 1, 0, C.byref(h)), ZX_OK)
        self.addCleanup(LIB.zxc_histogram_destroy, h)
        self.assertEqual(LIB.zxc_mono_lut_create(8, C.byref(lut)), ZX_OK)
        self.addCleanup(LIB.zxc_mono_lut_destroy, lut)
        a = np.full((4, 6), 7, np.uint8)
        short = frame(a, 8)
        short.data_size -= 1
        colour = np.zeros((4, 6, 3), np.uint8)
        cases = [
            (LIB.zxc_histogram_compute(None, C.byref(frame(a, 8)), None), ZX_E_FAIL),
            (LIB.zxc_histogram_compute(h, None, None), ZX_E_FAIL),
            (LIB.zxc_histogram_compute(h, C.byref(short), None), ZX_E_FAIL),
            (LIB.zxc_histogram_compute(h, C.byref(frame(a, 8)), C.byref(Probe(RECT, 6, 0, 2, 2))), ZX_E_FAIL),
            (LIB.zxc_histogram_compute(h, C.byref(frame(colour, 8)), None), ZX_E_FAIL),
            (LIB.zxc_histogram_create(0, 1, 0, C.byref(C.c_void_p())), ZX_E_FAIL),
            (LIB.zxc_mono_lut_update(lut, C.byref(LutPropsI(2, 0, float('nan'))), 8, 0), ZX_E_FAIL),
            (LIB.zxc_mono_lut_update(lut, C.byref(LutPropsI(2, 0, 1)), 9, 0), ZX_E_FAIL),
            (LIB.zxc_mono_binning(C.byref(frame(a, 8)), a.ctypes.data, a.nbytes, 2), ZX_E_FAIL),
            (LIB.zxc_bayer_binning(C.byref(frame(colour, 8)), a.ctypes.data, a.nbytes, 1, 3), ZX_E_NOTSUPPORTED),
            (LIB.zxc_accurate_auto_white(C.byref(frame(a, 8)), None, 0, 0, 0, None, None, None, None),
             ZX_E_NOTSUPPORTED),
        ]
        for i, (got, want) in enumerate(cases):
            self.assertEqual(got, want, 'case %d' % i)
        self.assertTrue((a == 7).all() and (colour == 0).all())


if __name__ == '__main__':
    LIB = load(sys.argv[1])
    unittest.main(argv=[sys.argv[0]] + sys.argv[2:])
