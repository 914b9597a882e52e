/* The C interface called from C: every image function against the C++ functions
   on the same frames (bit for bit), then every refusal with its status. */
#include <math.h>
#include <stdio.h>
#include <string.h>

#include "capi_reference.h"
#include "zx/zx_c.h"

/* The records are an ABI: other compilers and ctypes declarations rely on their
   sizes (fixed-width fields at natural alignment, no packing pragmas). */
#define SIZE_IS(type, bytes) typedef char size_of_##type[sizeof(type) == (bytes) ? 1 : -1]
SIZE_IS(ZxcFrame, 32); SIZE_IS(ZxcProbe, 20); SIZE_IS(ZxcHistogramInfo, 28); SIZE_IS(ZxcAEQuantile, 24);
SIZE_IS(ZxcAESetting, 56); SIZE_IS(ZxcAECameraDesc, 136); SIZE_IS(ZxcAEFrame, 144); SIZE_IS(ZxcAETuning, 56);
SIZE_IS(ZxcLutPropsI, 24); SIZE_IS(ZxcLutProps, 128);

static int g_failures;
static char g_context[160];

static void check(int ok, const char* what, int line)
{
    if (!ok)
        ++g_failures, fprintf(stderr, "capi_test.c:%d: failed: %s [%s]\n", line, what, g_context);
}
#define CHECK(cond) check((cond) != 0, #cond, __LINE__)
#define CHECK_STATUS(call, expected) check((call) == (expected), #call " == " #expected, __LINE__)

/* ---- Frames: random samples in slots that live as long as the test ---- */

#define SLOT_SAMPLES 8192
static uint16_t g_slots[3][SLOT_SAMPLES];
static uint32_t g_seed = 12345u;

static uint32_t full_scale(uint32_t bits) { return (1u << bits) - 1u; }

/* Samples in [0, top] (top below 2^bits) in slot s. */
static ZxcFrame make_frame(int s, uint32_t w, uint32_t h, uint32_t bits, uint32_t comp, uint32_t top)
{
    const size_t n = (size_t)w * h * comp;
    ZxcFrame f = {w, h, bits, comp, 0, g_slots[s]};
    size_t i;
    f.data_size = n * (bits > 8 ? 2u : 1u);
    CHECK(n <= SLOT_SAMPLES);
    for (i = 0; i < n && i < SLOT_SAMPLES; ++i) {
        g_seed ^= g_seed << 13, g_seed ^= g_seed >> 17, g_seed ^= g_seed << 5;
        if (bits > 8)
            g_slots[s][i] = (uint16_t)(g_seed % (top + 1u));
        else
            ((uint8_t*)g_slots[s])[i] = (uint8_t)(g_seed % (top + 1u));
    }
    return f;
}

static ZxcFrame copy_frame(int s, const ZxcFrame* f)
{
    ZxcFrame c = *f;
    c.data = g_slots[s];
    memcpy(c.data, f->data, (size_t)f->data_size);
    return c;
}

static int same_frame(const ZxcFrame* a, const ZxcFrame* b)
{
    return a->data_size == b->data_size && memcmp(a->data, b->data, (size_t)a->data_size) == 0;
}

/* ---- Records: distinct values in neighbouring fields, so a field mapped to its neighbour shows ---- */

/* per mille of the counted pixels, and a pixel count */
static const ZxcAEQuantile g_quantiles[2] = {{1, 5.0, 0}, {0, 0.0, 40}};
static const ZxcAESetting g_settings[2] = {{4.0, 2000.0, 0.3, 0.7, 0.6, 0.75, 0.9},
                                           {8.0, 500.0, 0.5, 0.4, 0.5, 0.7, 0.85}};
static const ZxcAECameraDesc g_descs[3] = {
    {4, 8, -0.2, 0.25, -0.1, 0.12, 16, 3, 0.1, 5000, 100, 0.05, 0.02, 0.98, 1, 8, 0.5},
    {5, 8, -0.2, 0.25, -0.1, 0.12, 16, 3, 0.1, 4900, 100, 0.05, 0.03, 0.98, 4, 8, 0.5},
    {6, 8, -0.2, 0.25, -0.1, 0.12, 16, 3, 0.1, 4800, 100, 0.05, 0.04, 0.98, 16, 8, 0.5},
};
static const ZxcAEFrame g_start = {1.5, 1.25, 1.2, 0.95, 1.1, 0.02, -0.01, 0.005, 0.01, 1,
                                   2,   2.0,  3.0, 1.15, 0.9, 1.05, 40.0,  0.0,   1,    3};
/* channel tables, mixing tables (weights below 1), global values only */
static const ZxcLutProps g_lut_props[3] = {
    {1.7, -0.05, 0.6, 1.4, 1.1, 0.9, 0.02, -0.03, 0.01, 1.2, 0.8, 0.7, 1, 1, 1, 1},
    {0.8, 0.1, 1.3, 1, 1, 1, 0, 0, 0, 1, 1, 1, 0.6, 0.4, 0.8, 0.9},
    {2.0, 0, 0.5, 1, 1, 1, 0, 0, 0, 1, 1, 1, 1, 1, 1, 1},
};

static ZxcAutoExposure* configured_engine(const ZxcAEQuantile* quantile)
{
    ZxcAutoExposure* ae = NULL;
    CHECK_STATUS(zxc_ae_create(&ae), ZX_OK);
    CHECK_STATUS(zxc_ae_set_quantile(ae, quantile), ZX_OK);
    CHECK_STATUS(zxc_ae_set_setting(ae, 1, &g_settings[0]), ZX_OK);
    CHECK_STATUS(zxc_ae_set_setting(ae, 2, &g_settings[1]), ZX_OK);
    CHECK_STATUS(zxc_ae_set_camera_descs(ae, g_descs, 3), ZX_OK);
    return ae;
}

/* ---- Families: each variant through the C interface and through the reference ---- */

/* variant: colour (bit 0), probe (4 = none), clip limits (from 10 on) */
static void family_histogram(uint32_t bits, unsigned v)
{
    static uint32_t want[4 << 16], got[1 << 16];
    const ZxcProbe probes[] = {
        {ZXC_PROBE_RECT, 5, 3, 20, 40},  /* reaches past the bottom */
        {ZXC_PROBE_RECT, 0, 0, 1000, 1000},
        {ZXC_PROBE_CIRCLE, 10, 8, 9, 0},
        {ZXC_PROBE_CIRCLE, 36, 0, 5, 0},  /* around the top right corner */
    };
    const uint32_t comp = v & 1 ? 3 : 1, p = (v >> 1) % 5, clip = v / 10, n = 1u << bits, top = full_scale(bits);
    const uint32_t limits[3] = {top / 3, top / 2, top / 5}, mono_limits[3] = {top / 3, top / 3, top / 3};
    const ZxcProbe* probe = p < 4 ? &probes[p] : NULL;
    ZxcFrame f = make_frame(0, 37, 23, bits, comp, top);
    ZxcHistogram* h = NULL;
    ZxcHistogramInfo info;
    uint32_t want_pixels = 0, want_bins = 0, c;
    ref_histogram(&f, probe, (int)bits, clip ? (comp == 1 ? mono_limits : limits) : NULL, want, &want_pixels,
                  &want_bins);
    CHECK_STATUS(zxc_histogram_create((int32_t)bits, comp == 1, comp == 3, &h), ZX_OK);
    if (clip)
        CHECK_STATUS(zxc_histogram_set_clip_limits(h, limits, comp), ZX_OK);
    CHECK_STATUS(zxc_histogram_compute(h, &f, probe), ZX_OK);
    CHECK_STATUS(zxc_histogram_get_info(h, &info), ZX_OK);
    CHECK(info.pixel_count == want_pixels && info.bin_count == n && want_bins == n && info.max_bits == (int32_t)bits);
    CHECK(info.mono == (comp == 1) && info.has_mono == (comp == 1) && info.has_colour == (comp == 3) &&
          info.clipped == (int32_t)clip);
    for (c = 0; c < 4; ++c) {
        const int present = (comp == 1) == (c == ZXC_CHANNEL_MONO);
        CHECK_STATUS(zxc_histogram_get_bins(h, c, got, n), present ? ZX_OK : ZX_E_FAIL);
        CHECK(!present || memcmp(got, want + (c << bits), n * sizeof *got) == 0);
    }
    zxc_histogram_destroy(h);
}

/* variant: probe and the pixel-count quantile (bit 0), colour (bit 1), dark, mid-grey or full-range frame */
static void family_ae(uint32_t bits, unsigned v)
{
    static const uint32_t flag_sets[] = {
        ZXC_AE_DISPLAYGAIN | ZXC_AE_OFFSET | ZXC_AE_EXPOSURE, ZXC_AE_MODESEARCH | ZXC_AE_FACTOR | ZXC_AE_EXPOSURE | ZXC_AE_ALTMODE,
        ZXC_AE_WHITEBALANCE | ZXC_AE_BLACKOFFSETS | ZXC_AE_HARDWHITE | ZXC_AE_DISPLAYGAIN | ZXC_AE_OFFSET | ZXC_AE_MODESEARCH |
            ZXC_AE_EXPOSURE,
        ZXC_AE_EXPOSURE | ZXC_AE_NOSPLIT | ZXC_AE_STRICT | ZXC_AE_ALTFACTOR, 0x17FF};
    const ZxcProbe rect = {ZXC_PROBE_RECT, 4, 4, 30, 20};
    const int probed = (int)(v & 1), mono = !(v & 2);
    const ZxcProbe* probe = probed ? &rect : NULL;
    const uint32_t top = v < 4 ? full_scale(bits) / 14 : v < 8 ? full_scale(bits) / 5 * 3 : full_scale(bits);
    ZxcFrame f = make_frame(0, 48, 32, bits, mono ? 1 : 3, top);
    ZxcHistogram* h = NULL;
    ZxcAutoExposure* ae = configured_engine(&g_quantiles[probed]);
    size_t fl;
    int mode;
    CHECK_STATUS(zxc_histogram_create((int32_t)bits, mono, !mono, &h), ZX_OK);
    CHECK_STATUS(zxc_histogram_compute(h, &f, probe), ZX_OK);
    for (fl = 0; fl < sizeof flag_sets / sizeof flag_sets[0]; ++fl)
        for (mode = 0; mode <= 1; ++mode) {
            ZxcAEFrame want = g_start, got = g_start;
            int32_t dark = -1;
            const int want_dark =
                ref_ae(&g_quantiles[probed], g_settings, g_descs, 3, &f, probe, mode, flag_sets[fl], 0, 0, &want);
            CHECK_STATUS(zxc_ae_compute(ae, mode, flag_sets[fl], &got, h), ZX_OK);
            CHECK_STATUS(zxc_ae_get_dark(ae, &dark), ZX_OK);
            CHECK(memcmp(&want, &got, sizeof want) == 0 && dark == want_dark);
            /* no histogram: the other setting's target, mono and clipped from the variant */
            want = got = g_start;
            ref_ae(&g_quantiles[probed], g_settings, g_descs, 3, NULL, NULL, mode, flag_sets[fl], mono, probed, &want);
            CHECK_STATUS(zxc_ae_convert(ae, mode, flag_sets[fl], &got, mono, probed), ZX_OK);
            CHECK(memcmp(&want, &got, sizeof want) == 0);
        }
    zxc_ae_destroy(ae), zxc_histogram_destroy(h);
}

/* variant: properties (v / 4); colour tables, intensity table, mono table, quantitative mono table */
static void family_lut(uint32_t bits, unsigned v)
{
    const ZxcLutProps* props = &g_lut_props[v / 4];
    const ZxcLutPropsI mono_props = {props->gain, props->offset, props->gamma};
    const int kind = (int)(v % 4);
    ZxcFrame f = make_frame(0, 29, 11, bits, kind == 0 ? 3 : 1, full_scale(bits));
    ZxcFrame want = copy_frame(1, &f), orig = copy_frame(2, &f);
    ref_lut(props, kind, (int)bits, &want);
    if (kind >= 2) {
        ZxcMonoLut* lut = NULL;
        CHECK_STATUS(zxc_mono_lut_create(16, &lut), ZX_OK);
        CHECK_STATUS(zxc_mono_lut_update(lut, &mono_props, (int32_t)bits, kind == 3), ZX_OK);
        CHECK_STATUS(zxc_mono_lut_apply(lut, &f), ZX_OK);
        zxc_mono_lut_destroy(lut);
    } else {
        ZxcLut* lut = NULL;
        CHECK_STATUS(zxc_lut_create(16, &lut), ZX_OK);
        CHECK_STATUS(zxc_lut_update(lut, props, kind, (int32_t)bits), ZX_OK);
        CHECK_STATUS(zxc_lut_apply(lut, &f), ZX_OK);
        zxc_lut_destroy(lut);
    }
    CHECK(same_frame(&f, &want) && !same_frame(&f, &orig)); /* none of these tables is the identity */
}

/* variant: Bayer type (v / 3 + 1) with factor v % 3 (0 demosaics), then mono binning by 1, 2, 3 */
static void family_raw(uint32_t bits, unsigned v)
{
    static const uint32_t sizes[][2] = {{2, 2}, {7, 5}, {16, 9}};
    const int type = v < 12 ? (int)(v / 3) + 1 : 0;
    const uint32_t factor = v < 12 ? v % 3 : v - 11, k = factor ? factor : 1;
    size_t s;
    for (s = 0; s < 3; ++s) {
        const uint32_t w = sizes[s][0], h = sizes[s][1];
        ZxcFrame raw = make_frame(0, w * k, h * k, bits, 1, full_scale(bits));
        ZxcFrame got = make_frame(1, w, h, bits, type ? 3 : 1, 0), want = copy_frame(2, &got);
        ref_raw(&want, raw.data, type, factor);
        CHECK_STATUS(type == 0     ? zxc_mono_binning(&got, raw.data, raw.data_size, factor)
                     : factor == 0 ? zxc_bayer_to_rgb(&got, raw.data, raw.data_size, type)
                                   : zxc_bayer_binning(&got, raw.data, raw.data_size, type, factor),
                     ZX_OK);
        CHECK(same_frame(&got, &want));
    }
}

/* variant: probe (v / 3, 2 = none), black offsets (v % 3); full-scale samples make saturated pixels */
static void family_white(uint32_t bits, unsigned v)
{
    const ZxcProbe probes[] = {{ZXC_PROBE_RECT, 3, 2, 12, 9}, {ZXC_PROBE_CIRCLE, 20, 10, 7, 0}};
    static const double offsets[][3] = {{0.0, 0.0, 0.0}, {-0.01, 0.02, 0.0}, {-0.5, 0.0, 0.3}};
    const ZxcProbe* probe = v < 6 ? &probes[v / 3] : NULL;
    const double* o = offsets[v % 3];
    ZxcFrame f = make_frame(0, 33, 21, bits, 3, full_scale(bits));
    double want[3], got[3] = {0, 0, 0};
    uint32_t examined = 0;
    const int count = ref_accurate_white(&f, probe, o, want);
    CHECK_STATUS(zxc_accurate_auto_white(&f, probe, o[0], o[1], o[2], &got[0], &got[1], &got[2], &examined), ZX_OK);
    CHECK(got[0] == want[0] && got[1] == want[1] && got[2] == want[2] && (int)examined == count && count > 0);
}

static const struct {
    const char* name;
    void (*run)(uint32_t bits, unsigned variant);
    unsigned variants;
} g_families[] = {
    {"histogram", family_histogram, 20}, {"auto exposure", family_ae, 12}, {"look-up table", family_lut, 12},
    {"demosaic and binning", family_raw, 15}, {"accurate white", family_white, 9},
};

/* ---- Defaults and tuning ---- */

static void test_defaults_and_tuning(void)
{
    const ZxcLutProps lut_defaults = {1, 0, 1, 1, 1, 1, 0, 0, 0, 1, 1, 1, 1, 1, 1, 1};
    const ZxcAEFrame frame_defaults = {1, 1, 1, 1, 1, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 1, 1, 0, 1, 1};
    ZxcLutProps props;
    ZxcAEFrame v;
    ZxcAETuning tuning, back;
    ZxcFrame black = make_frame(0, 16, 16, 8, 1, 0);
    ZxcHistogram* h = NULL;
    ZxcAutoExposure* ae = configured_engine(&g_quantiles[0]);
    int32_t dark = 0;
    strcpy(g_context, "defaults and tuning");
    zxc_lut_props_init(&props);
    zxc_ae_frame_init(&v);
    CHECK(memcmp(&props, &lut_defaults, sizeof props) == 0 && memcmp(&v, &frame_defaults, sizeof v) == 0);
    CHECK_STATUS(zxc_ae_get_tuning(ae, &tuning), ZX_OK);
    CHECK(tuning.dark_boost == 32.0 && tuning.overflow_limit == 0.0 && tuning.overflow_steps[4] == 0.0625);
    tuning.dark_boost = 4.0;
    tuning.overflow_limit = 0.01;
    tuning.overflow_steps[1] = 0.3;
    CHECK_STATUS(zxc_ae_set_tuning(ae, &tuning), ZX_OK);
    CHECK_STATUS(zxc_ae_get_tuning(ae, &back), ZX_OK);
    CHECK(memcmp(&back, &tuning, sizeof back) == 0);
    /* a black frame lengthens the exposure by the boost and sets the dark flag */
    v = g_start;
    CHECK_STATUS(zxc_histogram_create(8, 1, 0, &h), ZX_OK);
    CHECK_STATUS(zxc_histogram_compute(h, &black, NULL), ZX_OK);
    CHECK_STATUS(zxc_ae_compute(ae, 1, ZXC_AE_EXPOSURE | ZXC_AE_NOSPLIT, &v, h), ZX_OK);
    CHECK(zxc_ae_get_dark(ae, &dark) == ZX_OK && dark == 1 && v.exposure == 160.0); /* 40 x 4, same mode */
    zxc_ae_destroy(ae), zxc_histogram_destroy(h);
}

/* ---- Refusals ---- */

static void all_return(int want, const int* got, size_t n, const char* calls, int line)
{
    size_t k;
    for (k = 0; k < n; ++k)
        if (got[k] != want) {
            ++g_failures;
            fprintf(stderr, "capi_test.c:%d: call %u returned %d, not %d: %s [%s]\n", line, (unsigned)k, got[k], want,
                    calls, g_context);
        }
}
/* Each call returns the status; they run in any order, so none may depend on another. */
#define ALL_RETURN(want, ...) \
    all_return(want, (const int[]){__VA_ARGS__}, sizeof((const int[]){__VA_ARGS__}) / sizeof(int), #__VA_ARGS__, __LINE__)

static void test_bad_input(void)
{
    static uint8_t mono_data[16 * 8], colour_data[16 * 8 * 3], raw[64 * 64];
    ZxcFrame mono = {16, 8, 8, 1, sizeof mono_data, mono_data}, colour = {16, 8, 8, 3, sizeof colour_data, colour_data};
    ZxcFrame narrow = {1, 8, 8, 3, sizeof colour_data, colour_data};
    /* frames every frame function refuses before it reads a sample (a null frame after them) */
    const struct { ZxcFrame f; int status; } frames[] = {
        {{16, 8, 8, 1, 128, NULL}, ZX_E_FAIL},         {{0, 8, 8, 1, 128, mono_data}, ZX_E_FAIL},
        {{16, 0, 8, 1, 128, mono_data}, ZX_E_FAIL},    {{16, 8, 0, 1, 128, mono_data}, ZX_E_FAIL},
        {{16, 8, 8, 0, 128, mono_data}, ZX_E_FAIL},    {{16, 8, 8, 1, 127, mono_data}, ZX_E_FAIL},
        {{16, 8, 8, 3, 383, colour_data}, ZX_E_FAIL},  {{16, 8, 17, 1, 128, mono_data}, ZX_E_NOTSUPPORTED},
        {{16, 8, 8, 2, 256, colour_data}, ZX_E_NOTSUPPORTED},
        /* byte counts beyond 32 bits */
        {{65536, 65536, 8, 1, UINT64_MAX, mono_data}, ZX_E_NOTSUPPORTED},
        {{0xFFFFFFFFu, 1, 16, 3, UINT64_MAX, colour_data}, ZX_E_NOTSUPPORTED},
    };
    /* an unknown type counts nothing (the last count stays); no pixel in the frame empties the histogram */
    const struct { ZxcProbe p; int status; uint32_t pixels; } probes[] = {
        {{0, 0, 0, 4, 4}, ZX_E_FAIL, 128},                {{3, 0, 0, 4, 4}, ZX_E_FAIL, 128},
        {{ZXC_PROBE_RECT, 16, 0, 5, 5}, ZX_E_FAIL, 0},    {{ZXC_PROBE_RECT, 0, 0, 0, 5}, ZX_E_FAIL, 0},
        {{ZXC_PROBE_CIRCLE, 1000, 1000, 10, 0}, ZX_E_FAIL, 0}, {{ZXC_PROBE_CIRCLE, 0, 0, 0xFFFFFFFFu, 0}, ZX_OK, 128},
    };
    const size_t n_frames = sizeof frames / sizeof frames[0];
    ZxcHistogram *hm = NULL, *hc = NULL;
    ZxcAutoExposure* ae = NULL;
    ZxcMonoLut* mlut = NULL;
    ZxcLut* lut = NULL;
    ZxcHistogramInfo info;
    ZxcAEFrame v, before;
    ZxcAETuning tuning;
    ZxcAESetting inf_setting = g_settings[0];
    ZxcAECameraDesc descs[34];
    const ZxcAEQuantile q[3] = {{1, -1.0, 0}, {1, 1000.5, 0}, {1, NAN, 0}};
    ZxcLutPropsI mp = {2.0, 0.0, 1.0}, nan_mp = {2.0, 0.0, NAN};
    ZxcLutProps cp = g_lut_props[2], inf_cp = g_lut_props[2];
    uint32_t bins[256], limits[4] = {10, 20, 30, 40}, examined = 7;
    double gain = -1.0;
    const int diag_before = ref_diag_count();
    size_t i;
    memset(mono_data, 200, sizeof mono_data);
    memset(colour_data, 100, sizeof colour_data);
    memset(raw, 50, sizeof raw);
    for (i = 0; i < 34; ++i)
        descs[i] = g_descs[0];
    descs[33].sensitivity = NAN; /* only the last: the count checks must not hinge on it */
    inf_setting.high_target = INFINITY;
    inf_cp.weight_r = INFINITY;
    strcpy(g_context, "bad input");

    /* handles */
    ALL_RETURN(ZX_E_FAIL, zxc_histogram_create(0, 1, 0, &hm), zxc_histogram_create(17, 1, 0, &hm),
               zxc_histogram_create(8, 0, 0, &hm), zxc_histogram_create(8, 1, 0, NULL), zxc_ae_create(NULL),
               zxc_mono_lut_create(0, &mlut), zxc_mono_lut_create(17, &mlut), zxc_lut_create(-1, &lut));
    CHECK(hm == NULL && mlut == NULL && lut == NULL);
    zxc_histogram_destroy(NULL), zxc_ae_destroy(NULL), zxc_mono_lut_destroy(NULL), zxc_lut_destroy(NULL);
    zxc_ae_frame_init(NULL), zxc_lut_props_init(NULL);
    ALL_RETURN(ZX_OK, zxc_histogram_create(8, 1, 0, &hm), zxc_histogram_create(8, 0, 1, &hc), zxc_ae_create(&ae),
               zxc_mono_lut_create(8, &mlut), zxc_lut_create(8, &lut));
    ALL_RETURN(ZX_OK, zxc_mono_lut_update(mlut, &mp, 8, 0), zxc_lut_update(lut, &cp, 0, 8));

    /* frames: every frame function goes through the same description check, and writes nothing */
    for (i = 0; i <= n_frames; ++i) {
        ZxcFrame* f = i < n_frames ? (ZxcFrame*)&frames[i].f : NULL;
        sprintf(g_context, "bad frame %u", (unsigned)i);
        ALL_RETURN(i < n_frames ? frames[i].status : ZX_E_FAIL,
                   zxc_histogram_compute(f && f->components == 3 ? hc : hm, f, NULL), zxc_mono_lut_apply(mlut, f),
                   zxc_lut_apply(lut, f), zxc_accurate_auto_white(f, NULL, 0, 0, 0, &gain, NULL, NULL, &examined),
                   zxc_bayer_to_rgb(f, raw, sizeof raw, ZXC_BAYER_RGGB), zxc_mono_binning(f, raw, sizeof raw, 1),
                   zxc_bayer_binning(f, raw, sizeof raw, ZXC_BAYER_RGGB, 1));
    }

    /* probes, for the histogram and the accurate white alike */
    for (i = 0; i < sizeof probes / sizeof probes[0]; ++i) {
        double g = -1.0;
        sprintf(g_context, "bad probe %u", (unsigned)i);
        CHECK_STATUS(zxc_histogram_compute(hm, &mono, NULL), ZX_OK);
        CHECK(zxc_histogram_compute(hm, &mono, &probes[i].p) == probes[i].status);
        CHECK(zxc_histogram_get_info(hm, &info) == ZX_OK && info.pixel_count == probes[i].pixels);
        CHECK(zxc_accurate_auto_white(&colour, &probes[i].p, 0, 0, 0, &g, NULL, NULL, NULL) == probes[i].status);
        CHECK(probes[i].status == ZX_OK || g == -1.0);
    }
    strcpy(g_context, "bad input");

    /* histograms: kinds, clip limits, info and bins */
    ALL_RETURN(ZX_E_FAIL, zxc_histogram_compute(NULL, &mono, NULL), zxc_histogram_compute(hm, &colour, NULL),
               zxc_histogram_compute(hc, &mono, NULL), zxc_histogram_set_clip_limits(NULL, limits, 1),
               zxc_histogram_set_clip_limits(hc, limits, 1), zxc_histogram_set_clip_limits(hm, limits, 4),
               zxc_histogram_set_clip_limits(hm, limits, 0), zxc_histogram_set_clip_limits(hm, NULL, 1),
               zxc_histogram_get_info(NULL, &info), zxc_histogram_get_info(hm, NULL),
               zxc_histogram_get_bins(NULL, ZXC_CHANNEL_MONO, bins, 256),
               zxc_histogram_get_bins(hm, ZXC_CHANNEL_RED, bins, 256), zxc_histogram_get_bins(hm, 4, bins, 256),
               zxc_histogram_get_bins(hm, ZXC_CHANNEL_MONO, bins, 255),
               zxc_histogram_get_bins(hm, ZXC_CHANNEL_MONO, NULL, 256));
    CHECK_STATUS(zxc_histogram_compute(hm, &mono, NULL), ZX_OK);
    CHECK_STATUS(zxc_histogram_set_clip_limits(hm, limits, 1), ZX_OK);
    CHECK_STATUS(zxc_histogram_set_clip_limits(hm, NULL, 0), ZX_OK);
    CHECK(zxc_histogram_get_info(hm, &info) == ZX_OK && info.clipped == 0);
    CHECK(zxc_histogram_get_bins(hm, ZXC_CHANNEL_MONO, bins, 256) == ZX_OK && bins[200] == 128);

    /* auto exposure: configuration, then steps that leave the frame as it was */
    zxc_ae_frame_init(&v);
    ALL_RETURN(ZX_E_FAIL, zxc_ae_compute(ae, 1, ZXC_AE_EXPOSURE, &v, hm), /* no camera modes yet */
               zxc_ae_convert(ae, 1, ZXC_AE_EXPOSURE, &v, 1, 0));
    ALL_RETURN(ZX_E_FAIL, zxc_ae_set_camera_descs(ae, descs, 0), zxc_ae_set_camera_descs(ae, descs, 33),
               zxc_ae_set_camera_descs(ae, NULL, 1), zxc_ae_set_camera_descs(ae, descs + 32, 2),
               zxc_ae_set_setting(ae, 0, &g_settings[0]), zxc_ae_set_setting(ae, 3, &g_settings[0]),
               zxc_ae_set_setting(ae, 1, NULL), zxc_ae_set_setting(ae, 1, &inf_setting), zxc_ae_set_quantile(ae, &q[0]),
               zxc_ae_set_quantile(ae, &q[1]), zxc_ae_set_quantile(ae, &q[2]),
               zxc_ae_set_quantile(NULL, &g_quantiles[0]), zxc_ae_set_tuning(ae, NULL),
               zxc_ae_get_tuning(NULL, &tuning), zxc_ae_get_dark(ae, NULL));
    CHECK_STATUS(zxc_ae_get_tuning(ae, &tuning), ZX_OK);
    tuning.overflow_steps[2] = NAN;
    CHECK_STATUS(zxc_ae_set_tuning(ae, &tuning), ZX_E_FAIL);
    ALL_RETURN(ZX_OK, zxc_ae_set_camera_descs(ae, descs, 1), zxc_ae_set_setting(ae, 1, &g_settings[0]),
               zxc_ae_set_quantile(ae, &g_quantiles[0]));
    CHECK_STATUS(zxc_ae_set_camera_descs(ae, g_descs, 2), ZX_OK);
    /* a mode or alternative mode not below the two modes, a number that is not finite */
    for (i = 0; i < 3; ++i) {
        zxc_ae_frame_init(&v);
        v.camera_mode = i == 0 ? 2 : 0;
        v.alt_camera_mode = i == 1 ? 5 : 0;
        v.exposure = i == 2 ? NAN : 1.0;
        before = v;
        ALL_RETURN(ZX_E_FAIL, zxc_ae_compute(ae, 1, ZXC_AE_EXPOSURE | ZXC_AE_ALTMODE, &v, hm),
                   zxc_ae_convert(ae, 1, ZXC_AE_EXPOSURE, &v, 1, 0));
        CHECK(memcmp(&v, &before, sizeof v) == 0);
    }
    zxc_ae_frame_init(&v);
    before = v;
    ALL_RETURN(ZX_E_FAIL, zxc_ae_compute(NULL, 1, ZXC_AE_EXPOSURE, &v, hm),
               zxc_ae_compute(ae, 1, ZXC_AE_EXPOSURE, NULL, hm), zxc_ae_compute(ae, 1, ZXC_AE_EXPOSURE, &v, NULL),
               zxc_ae_compute(ae, 1, ZXC_AE_EXPOSURE, &v, hc)); /* hc never computed */
    CHECK_STATUS(zxc_histogram_compute(hm, &mono, &probes[2].p), ZX_E_FAIL);
    CHECK_STATUS(zxc_ae_compute(ae, 1, ZXC_AE_EXPOSURE, &v, hm), ZX_E_FAIL); /* counted nothing */
    CHECK(memcmp(&v, &before, sizeof v) == 0);
    CHECK_STATUS(zxc_histogram_compute(hm, &mono, NULL), ZX_OK);
    CHECK(zxc_ae_compute(ae, 1, ZXC_AE_EXPOSURE, &v, hm) == ZX_OK && v.exposure != before.exposure);

    /* tables, demosaic and binning: properties, sources, types and factors */
    ALL_RETURN(ZX_E_FAIL, zxc_mono_lut_update(mlut, &mp, 0, 0), zxc_mono_lut_update(mlut, &mp, 9, 0),
               zxc_mono_lut_update(mlut, NULL, 8, 0), zxc_mono_lut_update(NULL, &mp, 8, 0),
               zxc_mono_lut_update(mlut, &nan_mp, 8, 1), zxc_mono_lut_apply(NULL, &mono),
               zxc_lut_update(lut, &inf_cp, 0, 8), zxc_lut_update(lut, &cp, 0, 9), zxc_lut_apply(NULL, &colour),
               zxc_bayer_to_rgb(&mono, raw, sizeof raw, ZXC_BAYER_RGGB),
               zxc_bayer_to_rgb(&narrow, raw, sizeof raw, ZXC_BAYER_RGGB),
               zxc_bayer_binning(&narrow, raw, sizeof raw, ZXC_BAYER_RGGB, 1),
               zxc_bayer_to_rgb(&colour, NULL, sizeof raw, ZXC_BAYER_RGGB),
               zxc_bayer_to_rgb(&colour, raw, 16 * 8 - 1, ZXC_BAYER_RGGB), zxc_bayer_to_rgb(&colour, raw, sizeof raw, 0),
               zxc_bayer_to_rgb(&colour, raw, sizeof raw, 5), zxc_mono_binning(&mono, raw, sizeof raw, 0),
               zxc_mono_binning(&colour, raw, sizeof raw, 2), zxc_mono_binning(&mono, raw, 32 * 16 - 1, 2),
               zxc_mono_binning(&mono, NULL, sizeof raw, 2),
               zxc_mono_binning(&mono, raw, UINT64_MAX, 0x10000000u), /* rows of 2^32 samples */
               zxc_bayer_binning(&mono, raw, sizeof raw, ZXC_BAYER_RGGB, 2),
               zxc_bayer_binning(&colour, raw, 32 * 16 - 1, ZXC_BAYER_RGGB, 2),
               zxc_bayer_binning(&colour, raw, sizeof raw, 9, 2));
    ALL_RETURN(ZX_E_NOTSUPPORTED, zxc_bayer_binning(&colour, raw, sizeof raw, ZXC_BAYER_RGGB, 3),
               zxc_bayer_binning(&colour, raw, sizeof raw, ZXC_BAYER_RGGB, 0),
               zxc_accurate_auto_white(&mono, NULL, 0, 0, 0, &gain, NULL, NULL, &examined));
    /* accurate white: offsets outside -1..1; outputs stay as they were */
    ALL_RETURN(ZX_E_FAIL, zxc_accurate_auto_white(&colour, NULL, 1.5, 0, 0, &gain, NULL, NULL, &examined),
               zxc_accurate_auto_white(&colour, NULL, 0, NAN, 0, &gain, NULL, NULL, &examined));
    CHECK(gain == -1.0 && examined == 7);
    CHECK_STATUS(zxc_accurate_auto_white(&colour, NULL, 0, 0, 0, NULL, NULL, NULL, NULL), ZX_OK);

    /* no refusal wrote a sample, and none raised a diagnostic assertion */
    CHECK(mono_data[0] == 200 && mono_data[127] == 200 && colour_data[0] == 100 && colour_data[383] == 100);
    CHECK(ref_diag_count() == diag_before);
    zxc_histogram_destroy(hm), zxc_histogram_destroy(hc), zxc_ae_destroy(ae);
    zxc_mono_lut_destroy(mlut), zxc_lut_destroy(lut);
}

int main(void)
{
    static const uint32_t depths[] = {8, 12, 16};
    size_t i, d;
    unsigned v;
    ref_diag_count(); /* counts from here on */
    for (i = 0; i < sizeof g_families / sizeof g_families[0]; ++i)
        for (d = 0; d < 3; ++d)
            for (v = 0; v < g_families[i].variants; ++v) {
                sprintf(g_context, "%s bits %u variant %u", g_families[i].name, (unsigned)depths[d], v);
                g_families[i].run(depths[d], v);
            }
    test_defaults_and_tuning();
    test_bad_input();
    g_context[0] = '\0';
    CHECK(ref_diag_count() == 0);
    if (g_failures) {
        fprintf(stderr, "capi_test: %d checks failed\n", g_failures);
        return 1;
    }
    printf("capi_test: all checks passed\n");
    return 0;
}
