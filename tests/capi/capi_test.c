/* The C interface called from C: every image function against the C++ functions
   on the same frames (bit for bit), then every refusal with its status. */
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "capi_reference.h"
#include "zx/zx_c.h"

/* The records are an ABI: other compilers and ctypes declarations rely on their
   sizes (fixed-width fields at natural alignment, no packing pragmas). */
#define SIZE_IS(type, bytes) typedef char size_of_##type[sizeof(type) == (bytes) ? 1 : -1]
SIZE_IS(ZxcFrame, 32);
SIZE_IS(ZxcProbe, 20);
SIZE_IS(ZxcHistogramInfo, 28);
SIZE_IS(ZxcAEQuantile, 24);
SIZE_IS(ZxcAESetting, 56);
SIZE_IS(ZxcAECameraDesc, 136);
SIZE_IS(ZxcAEFrame, 144);
SIZE_IS(ZxcAETuning, 56);
SIZE_IS(ZxcLutPropsI, 24);
SIZE_IS(ZxcLutProps, 128);

static int g_failures;
static char g_context[160];

static void check(int ok, const char* what, int line)
{
    if (ok)
        return;
    ++g_failures;
    fprintf(stderr, "capi_test.c:%d: failed: %s [%s]\n", line, what, g_context);
}
#define CHECK(cond) check((cond) != 0, #cond, __LINE__)
#define CHECK_STATUS(call, expected) check((call) == (expected), #call " == " #expected, __LINE__)

/* ---- Frames ---- */

static uint32_t g_seed = 12345u;
static uint32_t next_random(void)
{
    g_seed ^= g_seed << 13;
    g_seed ^= g_seed >> 17;
    g_seed ^= g_seed << 5;
    return g_seed;
}

static uint64_t frame_bytes(uint32_t w, uint32_t h, uint32_t bits, uint32_t comp)
{
    return (uint64_t)w * h * comp * (bits > 8 ? 2u : 1u);
}

/* Random samples in [0, top] (top below 2^bits); the caller frees data. */
static ZxcFrame make_frame(uint32_t w, uint32_t h, uint32_t bits, uint32_t comp, uint32_t top)
{
    ZxcFrame f;
    size_t i, n = (size_t)w * h * comp;
    f.width = w;
    f.height = h;
    f.bits = bits;
    f.components = comp;
    f.data_size = frame_bytes(w, h, bits, comp);
    f.data = malloc((size_t)f.data_size);
    for (i = 0; i < n; ++i) {
        uint32_t v = next_random() % (top + 1u);
        if (bits > 8)
            ((uint16_t*)f.data)[i] = (uint16_t)v;
        else
            ((uint8_t*)f.data)[i] = (uint8_t)v;
    }
    return f;
}

static ZxcFrame copy_frame(const ZxcFrame* f)
{
    ZxcFrame c = *f;
    c.data = malloc((size_t)f->data_size);
    memcpy(c.data, f->data, (size_t)f->data_size);
    return c;
}

static int same_frame(const ZxcFrame* a, const ZxcFrame* b)
{
    return a->data_size == b->data_size && memcmp(a->data, b->data, (size_t)a->data_size) == 0;
}

static uint32_t full_scale(uint32_t bits) { return (1u << bits) - 1u; }

/* ---- Histograms ---- */

static void test_histograms(void)
{
    static const uint32_t depths[] = {8, 12, 16};
    const ZxcProbe probes[] = {
        {ZXC_PROBE_RECT, 5, 3, 20, 40},   /* reaches past the bottom */
        {ZXC_PROBE_RECT, 0, 0, 1000, 1000},
        {ZXC_PROBE_CIRCLE, 10, 8, 9, 0},
        {ZXC_PROBE_CIRCLE, 36, 0, 5, 0},  /* around the top right corner */
    };
    size_t d, p;
    uint32_t comp, clip;
    for (d = 0; d < 3; ++d)
        for (comp = 1; comp <= 3; comp += 2)
            for (p = 0; p <= 4; ++p)
                for (clip = 0; clip <= 1; ++clip) {
                    const uint32_t bits = depths[d];
                    const ZxcProbe* probe = p < 4 ? &probes[p] : NULL;
                    const uint32_t limits[3] = {full_scale(bits) / 3, full_scale(bits) / 2, full_scale(bits) / 5};
                    const uint32_t mono_limits[3] = {limits[0], limits[0], limits[0]};
                    const size_t n = (size_t)1 << bits;
                    uint32_t* want = calloc(4 * n, sizeof(uint32_t));
                    uint32_t* got = calloc(n, sizeof(uint32_t));
                    uint32_t want_pixels = 0, want_bins = 0, c;
                    ZxcFrame f = make_frame(37, 23, bits, comp, full_scale(bits));
                    ZxcHistogram* h = NULL;
                    ZxcHistogramInfo info;
                    sprintf(g_context, "histogram bits %u comp %u probe %u clip %u", (unsigned)bits, (unsigned)comp,
                            (unsigned)p, (unsigned)clip);
                    ref_histogram(&f, probe, (int)bits, clip ? (comp == 1 ? mono_limits : limits) : NULL, want,
                                  &want_pixels, &want_bins);
                    CHECK_STATUS(zxc_histogram_create((int32_t)bits, comp == 1, comp == 3, &h), ZX_OK);
                    if (clip)
                        CHECK_STATUS(zxc_histogram_set_clip_limits(h, limits, comp), ZX_OK);
                    CHECK_STATUS(zxc_histogram_compute(h, &f, probe), ZX_OK);
                    CHECK_STATUS(zxc_histogram_get_info(h, &info), ZX_OK);
                    CHECK(info.pixel_count == want_pixels && info.bin_count == want_bins && want_bins == n);
                    CHECK(info.mono == (comp == 1) && info.clipped == (int32_t)clip && info.max_bits == (int32_t)bits);
                    for (c = 0; c < 4; ++c) {
                        const int present = comp == 1 ? c == ZXC_CHANNEL_MONO : c != ZXC_CHANNEL_MONO;
                        CHECK_STATUS(zxc_histogram_get_bins(h, c, got, (uint32_t)n), present ? ZX_OK : ZX_E_FAIL);
                        if (present)
                            CHECK(memcmp(got, want + c * n, n * sizeof(uint32_t)) == 0);
                    }
                    zxc_histogram_destroy(h);
                    free(f.data);
                    free(got);
                    free(want);
                }
}

/* ---- Auto exposure ---- */

/* per mille of the counted pixels, and a pixel count */
static ZxcAEQuantile g_quantiles[2] = {{1, 5.0, 0}, {0, 0.0, 40}};
static ZxcAESetting g_settings[2] = {
    {4.0, 2000.0, 0.3, 0.7, 0.6, 0.75, 0.9},
    {8.0, 500.0, 0.5, 0.4, 0.5, 0.7, 0.85},
};
static ZxcAECameraDesc g_descs[3];

static void fill_descs(void)
{
    uint32_t i;
    for (i = 0; i < 3; ++i) {
        ZxcAECameraDesc* d = &g_descs[i];
        d->max_compl_gain = 4.0 + i;
        d->max_white_balance_gain = 8.0;
        d->min_offset = -0.2;
        d->max_offset = 0.25;
        d->min_black_offset = -0.1;
        d->max_black_offset = 0.12;
        d->max_factor = 16.0;
        d->max_hard_white_gain = 3.0;
        d->min_exposure = 0.1;
        d->max_exposure = 5000.0 - 100.0 * i;
        d->exposure_knee = 100.0;
        d->exposure_step = 0.05;
        d->min_level = 0.02 + 0.01 * i;
        d->max_level = 0.98;
        d->sensitivity = (double)(1u << (2 * i));
        d->upper_gain = 8.0;
        d->lower_gain = 0.5;
    }
}

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

static ZxcAEFrame start_values(void)
{
    ZxcAEFrame s;
    zxc_ae_frame_init(&s);
    s.camera_mode = 1;
    s.alt_camera_mode = 2;
    s.exposure = 40.0;
    s.factor = 2.0;
    s.alt_factor = 3.0;
    /* distinct values everywhere: a field mapped to its neighbour changes the result */
    s.display_gain = 1.5;
    s.compl_gain = 1.25;
    s.white_balance_r = 1.2;
    s.white_balance_g = 0.95;
    s.white_balance_b = 1.1;
    s.offset = 0.02;
    s.black_offset_r = -0.01;
    s.black_offset_g = 0.005;
    s.black_offset_b = 0.01;
    s.hard_white_r = 1.15;
    s.hard_white_g = 0.9;
    s.hard_white_b = 1.05;
    s.excluded_top_bins = 3;
    return s;
}

static void test_auto_exposure(void)
{
    static const uint32_t flag_sets[] = {
        ZXC_AE_DISPLAYGAIN | ZXC_AE_OFFSET | ZXC_AE_EXPOSURE,
        ZXC_AE_MODESEARCH | ZXC_AE_FACTOR | ZXC_AE_EXPOSURE | ZXC_AE_ALTMODE,
        ZXC_AE_WHITEBALANCE | ZXC_AE_BLACKOFFSETS | ZXC_AE_HARDWHITE | ZXC_AE_DISPLAYGAIN | ZXC_AE_OFFSET |
            ZXC_AE_MODESEARCH | ZXC_AE_EXPOSURE,
        ZXC_AE_EXPOSURE | ZXC_AE_NOSPLIT | ZXC_AE_STRICT | ZXC_AE_ALTFACTOR,
        0x17FF,
    };
    const ZxcProbe rect = {ZXC_PROBE_RECT, 4, 4, 30, 20};
    /* dark, mid-grey and full-range frames, mono and colour */
    static const uint32_t tops[] = {300, 2500, 4095};
    size_t t, fl;
    uint32_t comp;
    int mode, probed;
    fill_descs();
    for (t = 0; t < 3; ++t)
        for (comp = 1; comp <= 3; comp += 2)
            for (probed = 0; probed <= 1; ++probed) {
                ZxcFrame f = make_frame(48, 32, 12, comp, tops[t]);
                ZxcHistogram* h = NULL;
                ZxcAutoExposure* ae = configured_engine(&g_quantiles[probed]);
                CHECK_STATUS(zxc_histogram_create(12, comp == 1, comp == 3, &h), ZX_OK);
                CHECK_STATUS(zxc_histogram_compute(h, &f, probed ? &rect : NULL), ZX_OK);
                for (fl = 0; fl < sizeof flag_sets / sizeof flag_sets[0]; ++fl)
                    for (mode = 0; mode <= 1; ++mode) {
                        ZxcAEFrame want = start_values(), got = start_values();
                        int32_t want_dark = -1, got_dark = -1;
                        sprintf(g_context, "AE top %u comp %u probe %d flags %x mode %d", (unsigned)tops[t],
                                (unsigned)comp, probed, (unsigned)flag_sets[fl], mode);
                        ref_ae_step(&g_quantiles[probed], g_settings, g_descs, 3, &f, probed ? &rect : NULL, 12, mode,
                                    flag_sets[fl], &want, &want_dark);
                        CHECK_STATUS(zxc_ae_compute(ae, mode, flag_sets[fl], &got, h), ZX_OK);
                        CHECK_STATUS(zxc_ae_get_dark(ae, &got_dark), ZX_OK);
                        CHECK(memcmp(&want, &got, sizeof want) == 0);
                        CHECK(want_dark == got_dark);
                    }
                zxc_ae_destroy(ae);
                zxc_histogram_destroy(h);
                free(f.data);
            }

    /* ConvertAE: no histogram, the other setting's target. */
    for (comp = 0; comp <= 3; ++comp)
        for (mode = 0; mode <= 1; ++mode) {
            ZxcAutoExposure* ae = configured_engine(&g_quantiles[0]);
            ZxcAEFrame want = start_values(), got = start_values();
            const uint32_t flags = ZXC_AE_EXPOSURE | ZXC_AE_FACTOR | ZXC_AE_DISPLAYGAIN;
            sprintf(g_context, "AE convert mono %u clipped %u mode %d", (unsigned)(comp & 1), (unsigned)(comp >> 1),
                    mode);
            ref_ae_convert(g_settings, g_descs, 3, mode, flags, (int)(comp & 1), (int)(comp >> 1), &want);
            CHECK_STATUS(zxc_ae_convert(ae, mode, flags, &got, (int32_t)(comp & 1), (int32_t)(comp >> 1)), ZX_OK);
            CHECK(memcmp(&want, &got, sizeof want) == 0);
            zxc_ae_destroy(ae);
        }

    /* A black frame lengthens the exposure and sets the dark flag; the tuning reads back. */
    {
        ZxcFrame f = make_frame(16, 16, 8, 1, 0);
        ZxcHistogram* h = NULL;
        ZxcAutoExposure* ae = configured_engine(&g_quantiles[0]);
        ZxcAEFrame v = start_values();
        ZxcAETuning tuning, back;
        int32_t dark = 0;
        strcpy(g_context, "AE black frame");
        CHECK_STATUS(zxc_ae_get_tuning(ae, &tuning), ZX_OK);
        CHECK(tuning.dark_boost == 32.0 && tuning.overflow_steps[4] == 0.0625);
        tuning.dark_boost = 4.0;
        tuning.overflow_limit = 0.01;
        tuning.overflow_steps[1] = 0.3;
        CHECK_STATUS(zxc_ae_set_tuning(ae, &tuning), ZX_OK);
        CHECK_STATUS(zxc_ae_get_tuning(ae, &back), ZX_OK);
        CHECK(memcmp(&back, &tuning, sizeof back) == 0);
        CHECK_STATUS(zxc_histogram_create(8, 1, 0, &h), ZX_OK);
        CHECK_STATUS(zxc_histogram_compute(h, &f, NULL), ZX_OK);
        CHECK_STATUS(zxc_ae_compute(ae, 1, ZXC_AE_EXPOSURE | ZXC_AE_NOSPLIT, &v, h), ZX_OK);
        CHECK_STATUS(zxc_ae_get_dark(ae, &dark), ZX_OK);
        CHECK(dark == 1 && v.exposure == 160.0);  /* 40 x the boost of 4, same mode */
        zxc_ae_destroy(ae);
        zxc_histogram_destroy(h);
        free(f.data);
    }
}

/* ---- Display look-up tables ---- */

static void test_luts(void)
{
    const ZxcLutPropsI mono_props[] = {{1.7, -0.05, 0.6}, {0.8, 0.1, 1.0}, {1.0, 0.0, 1.0}};
    ZxcLutProps props[3];
    static const uint32_t depths[] = {8, 10, 16};
    size_t p, d;
    int quantitative, mono;
    for (p = 0; p < 3; ++p)
        for (d = 0; d < 3; ++d)
            for (quantitative = 0; quantitative <= 1; ++quantitative) {
                const uint32_t bits = depths[d];
                ZxcFrame f = make_frame(29, 11, bits, p == 2 ? 3 : 1, full_scale(bits));
                ZxcFrame want = copy_frame(&f), orig = copy_frame(&f);
                ZxcMonoLut* lut = NULL;
                sprintf(g_context, "mono LUT props %u bits %u quantitative %d", (unsigned)p, (unsigned)bits,
                        quantitative);
                ref_mono_lut(16, &mono_props[p], (int)bits, quantitative, &want);
                CHECK_STATUS(zxc_mono_lut_create(16, &lut), ZX_OK);
                CHECK_STATUS(zxc_mono_lut_update(lut, &mono_props[p], (int32_t)bits, quantitative), ZX_OK);
                CHECK_STATUS(zxc_mono_lut_apply(lut, &f), ZX_OK);
                CHECK(same_frame(&f, &want));
                CHECK(same_frame(&f, &orig) == (p == 2)); /* props 2 are the identity */
                zxc_mono_lut_destroy(lut);
                free(f.data);
                free(want.data);
                free(orig.data);
            }

    /* channel tables, mixing tables (a weight below 1), and the intensity table */
    for (p = 0; p < 3; ++p)
        zxc_lut_props_init(&props[p]);
    props[0].gain = 1.1;
    props[0].gain_r = 1.4;
    props[0].offset_g = -0.03;
    props[0].gamma_b = 0.7;
    props[1].weight_g = 0.4;
    props[1].saturation = 0.9;
    props[1].gamma = 1.3;
    props[2].gain = 2.0;
    props[2].gamma = 0.5;
    for (p = 0; p < 3; ++p)
        for (d = 0; d < 3; ++d)
            for (mono = 0; mono <= 1; ++mono) {
                const uint32_t bits = depths[d];
                ZxcFrame f = make_frame(13, 9, bits, mono ? 1 : 3, full_scale(bits));
                ZxcFrame want = copy_frame(&f), orig = copy_frame(&f);
                ZxcLut* lut = NULL;
                sprintf(g_context, "colour LUT props %u bits %u mono %d", (unsigned)p, (unsigned)bits, mono);
                ref_lut(16, &props[p], mono, (int)bits, &want);
                CHECK_STATUS(zxc_lut_create(16, &lut), ZX_OK);
                CHECK_STATUS(zxc_lut_update(lut, &props[p], mono, (int32_t)bits), ZX_OK);
                CHECK_STATUS(zxc_lut_apply(lut, &f), ZX_OK);
                CHECK(same_frame(&f, &want));
                CHECK(!same_frame(&f, &orig)); /* none of these tables is the identity */
                zxc_lut_destroy(lut);
                free(f.data);
                free(want.data);
                free(orig.data);
            }
}

/* ---- Demosaic and binning ---- */

static void test_demosaic_and_binning(void)
{
    static const uint32_t sizes[][2] = {{2, 2}, {7, 5}, {16, 9}};
    static const uint32_t depths[] = {8, 12};
    size_t s, d;
    int32_t type;
    uint32_t factor;
    for (s = 0; s < 3; ++s)
        for (d = 0; d < 2; ++d)
            for (type = ZXC_BAYER_BGGR; type <= ZXC_BAYER_GRBG; ++type)
                for (factor = 0; factor <= 2; ++factor) {
                    /* factor 0: demosaic; 1 and 2: Bayer binning */
                    const uint32_t w = sizes[s][0], h = sizes[s][1], bits = depths[d], k = factor ? factor : 1;
                    ZxcFrame raw = make_frame(w * k, h * k, bits, 1, full_scale(bits));
                    ZxcFrame got = make_frame(w, h, bits, 3, 0), want = copy_frame(&got);
                    sprintf(g_context, "Bayer %ux%u bits %u type %d factor %u", (unsigned)w, (unsigned)h,
                            (unsigned)bits, (int)type, (unsigned)factor);
                    if (factor == 0) {
                        ref_bayer_to_rgb(&want, raw.data, type);
                        CHECK_STATUS(zxc_bayer_to_rgb(&got, raw.data, raw.data_size, type), ZX_OK);
                    } else {
                        ref_bayer_binning(&want, raw.data, type, factor);
                        CHECK_STATUS(zxc_bayer_binning(&got, raw.data, raw.data_size, type, factor), ZX_OK);
                    }
                    CHECK(same_frame(&got, &want));
                    free(raw.data);
                    free(got.data);
                    free(want.data);
                }
    for (s = 0; s < 3; ++s)
        for (d = 0; d < 2; ++d)
            for (factor = 1; factor <= 3; ++factor) {
                const uint32_t w = sizes[s][0], h = sizes[s][1], bits = depths[d] == 8 ? 8 : 16;
                ZxcFrame raw = make_frame(w * factor, h * factor, bits, 1, full_scale(bits));
                ZxcFrame got = make_frame(w, h, bits, 1, 0), want = copy_frame(&got);
                sprintf(g_context, "mono binning %ux%u bits %u factor %u", (unsigned)w, (unsigned)h, (unsigned)bits,
                        (unsigned)factor);
                ref_mono_binning(&want, raw.data, factor);
                CHECK_STATUS(zxc_mono_binning(&got, raw.data, raw.data_size, factor), ZX_OK);
                CHECK(same_frame(&got, &want));
                free(raw.data);
                free(got.data);
                free(want.data);
            }
}

/* ---- Accurate auto white ---- */

static void test_accurate_white(void)
{
    const ZxcProbe probes[] = {{ZXC_PROBE_RECT, 3, 2, 12, 9}, {ZXC_PROBE_CIRCLE, 20, 10, 7, 0}};
    const double offsets[][3] = {{0.0, 0.0, 0.0}, {-0.01, 0.02, 0.0}, {-0.5, 0.0, 0.3}};
    size_t p, o;
    uint32_t bits;
    for (bits = 8; bits <= 12; bits += 4)
        for (p = 0; p <= 2; ++p)
            for (o = 0; o < 3; ++o) {
                /* top at full scale: some pixels saturate */
                ZxcFrame f = make_frame(33, 21, bits, 3, full_scale(bits));
                double want[3], got[3] = {0, 0, 0};
                uint32_t examined = 0;
                const ZxcProbe* probe = p < 2 ? &probes[p] : NULL;
                int want_count;
                sprintf(g_context, "accurate white bits %u probe %u offsets %u", (unsigned)bits, (unsigned)p,
                        (unsigned)o);
                want_count = ref_accurate_white(&f, probe, offsets[o], want);
                CHECK_STATUS(zxc_accurate_auto_white(&f, probe, offsets[o][0], offsets[o][1], offsets[o][2], &got[0],
                                                     &got[1], &got[2], &examined),
                             ZX_OK);
                CHECK(got[0] == want[0] && got[1] == want[1] && got[2] == want[2]);
                CHECK((int)examined == want_count && want_count > 0);
                free(f.data);
            }
}

/* ---- Refusals ---- */

static void test_bad_input(void)
{
    uint8_t mono_data[16 * 8], colour_data[16 * 8 * 3], raw[64 * 64];
    ZxcFrame mono = {16, 8, 8, 1, sizeof mono_data, mono_data};
    ZxcFrame colour = {16, 8, 8, 3, sizeof colour_data, colour_data};
    ZxcFrame bad;
    ZxcHistogram *hm = NULL, *hc = NULL;
    ZxcHistogramInfo info;
    ZxcAutoExposure* ae = NULL;
    ZxcMonoLut* mlut = NULL;
    ZxcLut* lut = NULL;
    ZxcAEFrame v, before;
    ZxcAESetting nan_setting = g_settings[0];
    ZxcAECameraDesc descs[33];
    ZxcAEQuantile q = g_quantiles[0];
    ZxcAETuning tuning;
    ZxcLutPropsI mp = {2.0, 0.0, 1.0};
    ZxcLutProps cp;
    uint32_t bins[256], limits[4] = {10, 20, 30, 40}, examined = 7;
    double gain = -1.0;
    const ZxcProbe type0 = {0, 0, 0, 4, 4}, type3 = {3, 0, 0, 4, 4}, beside = {ZXC_PROBE_RECT, 16, 0, 5, 5},
                   empty = {ZXC_PROBE_RECT, 0, 0, 0, 5}, far = {ZXC_PROBE_CIRCLE, 1000, 1000, 10, 0},
                   huge = {ZXC_PROBE_CIRCLE, 0, 0, 0xFFFFFFFFu, 0};
    const int diag_before = ref_diag_count();
    int i;
    memset(mono_data, 200, sizeof mono_data);
    memset(colour_data, 100, sizeof colour_data);
    memset(raw, 50, sizeof raw);
    for (i = 0; i < 33; ++i)
        descs[i] = g_descs[0];
    strcpy(g_context, "bad input");

    /* handles */
    CHECK_STATUS(zxc_histogram_create(0, 1, 0, &hm), ZX_E_FAIL);
    CHECK_STATUS(zxc_histogram_create(17, 1, 0, &hm), ZX_E_FAIL);
    CHECK_STATUS(zxc_histogram_create(8, 0, 0, &hm), ZX_E_FAIL);
    CHECK(hm == NULL);
    CHECK_STATUS(zxc_histogram_create(8, 1, 0, NULL), ZX_E_FAIL);
    CHECK_STATUS(zxc_ae_create(NULL), ZX_E_FAIL);
    CHECK_STATUS(zxc_mono_lut_create(0, &mlut), ZX_E_FAIL);
    CHECK_STATUS(zxc_mono_lut_create(17, &mlut), ZX_E_FAIL);
    CHECK_STATUS(zxc_lut_create(-1, &lut), ZX_E_FAIL);
    CHECK(mlut == NULL && lut == NULL);
    zxc_histogram_destroy(NULL);
    zxc_ae_destroy(NULL);
    zxc_mono_lut_destroy(NULL);
    zxc_lut_destroy(NULL);
    zxc_ae_frame_init(NULL);
    zxc_lut_props_init(NULL);
    CHECK_STATUS(zxc_histogram_create(8, 1, 0, &hm), ZX_OK);
    CHECK_STATUS(zxc_histogram_create(8, 0, 1, &hc), ZX_OK);

    /* frames: every histogram call goes through the same description check */
    CHECK_STATUS(zxc_histogram_compute(NULL, &mono, NULL), ZX_E_FAIL);
    CHECK_STATUS(zxc_histogram_compute(hm, NULL, NULL), ZX_E_FAIL);
    bad = mono, bad.data = NULL;
    CHECK_STATUS(zxc_histogram_compute(hm, &bad, NULL), ZX_E_FAIL);
    bad = mono, bad.width = 0;
    CHECK_STATUS(zxc_histogram_compute(hm, &bad, NULL), ZX_E_FAIL);
    bad = mono, bad.height = 0;
    CHECK_STATUS(zxc_histogram_compute(hm, &bad, NULL), ZX_E_FAIL);
    bad = mono, bad.bits = 0;
    CHECK_STATUS(zxc_histogram_compute(hm, &bad, NULL), ZX_E_FAIL);
    bad = mono, bad.components = 0;
    CHECK_STATUS(zxc_histogram_compute(hm, &bad, NULL), ZX_E_FAIL);
    bad = mono, bad.data_size -= 1;
    CHECK_STATUS(zxc_histogram_compute(hm, &bad, NULL), ZX_E_FAIL);
    bad = mono, bad.bits = 17;
    CHECK_STATUS(zxc_histogram_compute(hm, &bad, NULL), ZX_E_NOTSUPPORTED);
    bad = mono, bad.components = 2;
    CHECK_STATUS(zxc_histogram_compute(hm, &bad, NULL), ZX_E_NOTSUPPORTED);
    /* sizes whose byte counts need more than 32 bits must be refused before a read */
    bad = mono, bad.width = 65536, bad.height = 65536, bad.data_size = UINT64_MAX;
    CHECK_STATUS(zxc_histogram_compute(hm, &bad, NULL), ZX_E_NOTSUPPORTED);
    bad = colour, bad.width = 0xFFFFFFFFu, bad.height = 1, bad.bits = 16, bad.data_size = UINT64_MAX;
    CHECK_STATUS(zxc_histogram_compute(hc, &bad, NULL), ZX_E_NOTSUPPORTED);
    CHECK_STATUS(zxc_histogram_compute(hm, &colour, NULL), ZX_E_FAIL);
    CHECK_STATUS(zxc_histogram_compute(hc, &mono, NULL), ZX_E_FAIL);

    /* probes: an unknown type counts nothing; one beside the frame empties the histogram */
    CHECK_STATUS(zxc_histogram_compute(hm, &mono, NULL), ZX_OK);
    CHECK_STATUS(zxc_histogram_compute(hm, &mono, &type0), ZX_E_FAIL);
    CHECK_STATUS(zxc_histogram_compute(hm, &mono, &type3), ZX_E_FAIL);
    CHECK_STATUS(zxc_histogram_get_info(hm, &info), ZX_OK);
    CHECK(info.pixel_count == 128);
    CHECK_STATUS(zxc_histogram_compute(hm, &mono, &beside), ZX_E_FAIL);
    CHECK_STATUS(zxc_histogram_get_info(hm, &info), ZX_OK);
    CHECK(info.pixel_count == 0);
    CHECK_STATUS(zxc_histogram_compute(hm, &mono, &empty), ZX_E_FAIL);
    CHECK_STATUS(zxc_histogram_compute(hm, &mono, &far), ZX_E_FAIL);
    CHECK_STATUS(zxc_histogram_compute(hm, &mono, &huge), ZX_OK);
    CHECK_STATUS(zxc_histogram_get_info(hm, &info), ZX_OK);
    CHECK(info.pixel_count == 128);

    /* clip limits, info and bins */
    CHECK_STATUS(zxc_histogram_set_clip_limits(NULL, limits, 1), ZX_E_FAIL);
    CHECK_STATUS(zxc_histogram_set_clip_limits(hc, limits, 1), ZX_E_FAIL);
    CHECK_STATUS(zxc_histogram_set_clip_limits(hm, limits, 4), ZX_E_FAIL);
    CHECK_STATUS(zxc_histogram_set_clip_limits(hm, limits, 0), ZX_E_FAIL);
    CHECK_STATUS(zxc_histogram_set_clip_limits(hm, NULL, 1), ZX_E_FAIL);
    CHECK_STATUS(zxc_histogram_set_clip_limits(hm, limits, 1), ZX_OK);
    CHECK_STATUS(zxc_histogram_set_clip_limits(hm, NULL, 0), ZX_OK);
    CHECK_STATUS(zxc_histogram_get_info(hm, &info), ZX_OK);
    CHECK(info.clipped == 0);
    CHECK_STATUS(zxc_histogram_get_info(NULL, &info), ZX_E_FAIL);
    CHECK_STATUS(zxc_histogram_get_info(hm, NULL), ZX_E_FAIL);
    CHECK_STATUS(zxc_histogram_get_bins(NULL, ZXC_CHANNEL_MONO, bins, 256), ZX_E_FAIL);
    CHECK_STATUS(zxc_histogram_get_bins(hm, ZXC_CHANNEL_RED, bins, 256), ZX_E_FAIL);
    CHECK_STATUS(zxc_histogram_get_bins(hm, 4, bins, 256), ZX_E_FAIL);
    CHECK_STATUS(zxc_histogram_get_bins(hm, ZXC_CHANNEL_MONO, bins, 255), ZX_E_FAIL);
    CHECK_STATUS(zxc_histogram_get_bins(hm, ZXC_CHANNEL_MONO, NULL, 256), ZX_E_FAIL);
    CHECK_STATUS(zxc_histogram_get_bins(hm, ZXC_CHANNEL_MONO, bins, 256), ZX_OK);
    CHECK(bins[200] == 128);

    /* auto exposure: configuration, then steps that leave the frame as it was */
    CHECK_STATUS(zxc_ae_create(&ae), ZX_OK);
    zxc_ae_frame_init(&v);
    CHECK_STATUS(zxc_ae_compute(ae, 1, ZXC_AE_EXPOSURE, &v, hm), ZX_E_FAIL); /* no camera modes yet */
    CHECK_STATUS(zxc_ae_convert(ae, 1, ZXC_AE_EXPOSURE, &v, 1, 0), ZX_E_FAIL);
    CHECK_STATUS(zxc_ae_set_camera_descs(ae, descs, 0), ZX_E_FAIL);
    CHECK_STATUS(zxc_ae_set_camera_descs(ae, descs, 33), ZX_E_FAIL);
    CHECK_STATUS(zxc_ae_set_camera_descs(ae, NULL, 1), ZX_E_FAIL);
    descs[1].sensitivity = NAN;
    CHECK_STATUS(zxc_ae_set_camera_descs(ae, descs, 2), ZX_E_FAIL);
    descs[1].sensitivity = 1.0;
    CHECK_STATUS(zxc_ae_set_camera_descs(ae, descs, 2), ZX_OK);
    CHECK_STATUS(zxc_ae_set_setting(ae, 0, &g_settings[0]), ZX_E_FAIL);
    CHECK_STATUS(zxc_ae_set_setting(ae, 3, &g_settings[0]), ZX_E_FAIL);
    CHECK_STATUS(zxc_ae_set_setting(ae, 1, NULL), ZX_E_FAIL);
    nan_setting.high_target = INFINITY;
    CHECK_STATUS(zxc_ae_set_setting(ae, 1, &nan_setting), ZX_E_FAIL);
    q.per_mille = -1.0;
    CHECK_STATUS(zxc_ae_set_quantile(ae, &q), ZX_E_FAIL);
    q.per_mille = 1000.5;
    CHECK_STATUS(zxc_ae_set_quantile(ae, &q), ZX_E_FAIL);
    q.per_mille = NAN;
    CHECK_STATUS(zxc_ae_set_quantile(ae, &q), ZX_E_FAIL);
    CHECK_STATUS(zxc_ae_set_quantile(NULL, &q), ZX_E_FAIL);
    CHECK_STATUS(zxc_ae_get_tuning(ae, &tuning), ZX_OK);
    tuning.overflow_steps[2] = NAN;
    CHECK_STATUS(zxc_ae_set_tuning(ae, &tuning), ZX_E_FAIL);
    CHECK_STATUS(zxc_ae_set_tuning(ae, NULL), ZX_E_FAIL);
    CHECK_STATUS(zxc_ae_get_tuning(NULL, &tuning), ZX_E_FAIL);
    CHECK_STATUS(zxc_ae_get_dark(ae, NULL), ZX_E_FAIL);
    CHECK_STATUS(zxc_ae_set_setting(ae, 1, &g_settings[0]), ZX_OK);
    CHECK_STATUS(zxc_ae_set_quantile(ae, &g_quantiles[0]), ZX_OK);
    v.camera_mode = 2; /* not below the two modes */
    before = v;
    CHECK_STATUS(zxc_ae_compute(ae, 1, ZXC_AE_EXPOSURE, &v, hm), ZX_E_FAIL);
    CHECK_STATUS(zxc_ae_convert(ae, 1, ZXC_AE_EXPOSURE, &v, 1, 0), ZX_E_FAIL);
    CHECK(memcmp(&v, &before, sizeof v) == 0);
    v.camera_mode = 0, v.alt_camera_mode = 5, before = v;
    CHECK_STATUS(zxc_ae_compute(ae, 1, ZXC_AE_EXPOSURE | ZXC_AE_ALTMODE, &v, hm), ZX_E_FAIL);
    CHECK(memcmp(&v, &before, sizeof v) == 0);
    v.alt_camera_mode = 0, v.exposure = NAN, before = v;
    CHECK_STATUS(zxc_ae_compute(ae, 1, ZXC_AE_EXPOSURE, &v, hm), ZX_E_FAIL);
    CHECK(isnan(v.exposure) && v.camera_mode == 0);
    zxc_ae_frame_init(&v);
    before = v;
    CHECK_STATUS(zxc_ae_compute(NULL, 1, ZXC_AE_EXPOSURE, &v, hm), ZX_E_FAIL);
    CHECK_STATUS(zxc_ae_compute(ae, 1, ZXC_AE_EXPOSURE, NULL, hm), ZX_E_FAIL);
    CHECK_STATUS(zxc_ae_compute(ae, 1, ZXC_AE_EXPOSURE, &v, NULL), ZX_E_FAIL);
    CHECK_STATUS(zxc_ae_compute(ae, 1, ZXC_AE_EXPOSURE, &v, hc), ZX_E_FAIL); /* never computed */
    CHECK_STATUS(zxc_histogram_compute(hm, &mono, &beside), ZX_E_FAIL);
    CHECK_STATUS(zxc_ae_compute(ae, 1, ZXC_AE_EXPOSURE, &v, hm), ZX_E_FAIL); /* counted nothing */
    CHECK(memcmp(&v, &before, sizeof v) == 0);
    CHECK_STATUS(zxc_histogram_compute(hm, &mono, NULL), ZX_OK);
    CHECK_STATUS(zxc_ae_compute(ae, 1, ZXC_AE_EXPOSURE, &v, hm), ZX_OK);
    CHECK(v.exposure != before.exposure);

    /* tables */
    CHECK_STATUS(zxc_mono_lut_create(8, &mlut), ZX_OK);
    CHECK_STATUS(zxc_mono_lut_update(mlut, &mp, 0, 0), ZX_E_FAIL);
    CHECK_STATUS(zxc_mono_lut_update(mlut, &mp, 9, 0), ZX_E_FAIL);
    CHECK_STATUS(zxc_mono_lut_update(mlut, NULL, 8, 0), ZX_E_FAIL);
    CHECK_STATUS(zxc_mono_lut_update(NULL, &mp, 8, 0), ZX_E_FAIL);
    mp.gamma = NAN;
    CHECK_STATUS(zxc_mono_lut_update(mlut, &mp, 8, 1), ZX_E_FAIL);
    mp.gamma = 1.0;
    CHECK_STATUS(zxc_mono_lut_update(mlut, &mp, 8, 0), ZX_OK);
    CHECK_STATUS(zxc_mono_lut_apply(mlut, NULL), ZX_E_FAIL);
    CHECK_STATUS(zxc_mono_lut_apply(NULL, &mono), ZX_E_FAIL);
    bad = mono, bad.data_size = 10;
    CHECK_STATUS(zxc_mono_lut_apply(mlut, &bad), ZX_E_FAIL);
    CHECK(mono_data[0] == 200 && mono_data[127] == 200);
    CHECK_STATUS(zxc_lut_create(8, &lut), ZX_OK);
    zxc_lut_props_init(&cp);
    cp.weight_r = INFINITY;
    CHECK_STATUS(zxc_lut_update(lut, &cp, 0, 8), ZX_E_FAIL);
    cp.weight_r = 0.5;
    CHECK_STATUS(zxc_lut_update(lut, &cp, 0, 9), ZX_E_FAIL);
    CHECK_STATUS(zxc_lut_update(lut, &cp, 0, 8), ZX_OK);
    bad = colour, bad.bits = 20;
    CHECK_STATUS(zxc_lut_apply(lut, &bad), ZX_E_NOTSUPPORTED);
    CHECK_STATUS(zxc_lut_apply(NULL, &colour), ZX_E_FAIL);
    CHECK(colour_data[0] == 100);

    /* demosaic and binning write nothing when they refuse */
    CHECK_STATUS(zxc_bayer_to_rgb(&mono, raw, sizeof raw, ZXC_BAYER_RGGB), ZX_E_FAIL);
    bad = colour, bad.width = 1;
    CHECK_STATUS(zxc_bayer_to_rgb(&bad, raw, sizeof raw, ZXC_BAYER_RGGB), ZX_E_FAIL);
    CHECK_STATUS(zxc_bayer_to_rgb(&colour, NULL, sizeof raw, ZXC_BAYER_RGGB), ZX_E_FAIL);
    CHECK_STATUS(zxc_bayer_to_rgb(&colour, raw, 16 * 8 - 1, ZXC_BAYER_RGGB), ZX_E_FAIL);
    CHECK_STATUS(zxc_bayer_to_rgb(&colour, raw, sizeof raw, 0), ZX_E_FAIL);
    CHECK_STATUS(zxc_bayer_to_rgb(&colour, raw, sizeof raw, 5), ZX_E_FAIL);
    CHECK_STATUS(zxc_bayer_to_rgb(NULL, raw, sizeof raw, ZXC_BAYER_RGGB), ZX_E_FAIL);
    CHECK_STATUS(zxc_mono_binning(&mono, raw, sizeof raw, 0), ZX_E_FAIL);
    CHECK_STATUS(zxc_mono_binning(&colour, raw, sizeof raw, 2), ZX_E_FAIL);
    CHECK_STATUS(zxc_mono_binning(&mono, raw, 32 * 16 - 1, 2), ZX_E_FAIL);
    CHECK_STATUS(zxc_mono_binning(&mono, NULL, sizeof raw, 2), ZX_E_FAIL);
    CHECK_STATUS(zxc_mono_binning(&mono, raw, UINT64_MAX, 0x10000000u), ZX_E_FAIL); /* rows of 2^32 samples */
    CHECK_STATUS(zxc_bayer_binning(&colour, raw, sizeof raw, ZXC_BAYER_RGGB, 3), ZX_E_NOTSUPPORTED);
    CHECK_STATUS(zxc_bayer_binning(&colour, raw, sizeof raw, ZXC_BAYER_RGGB, 0), ZX_E_NOTSUPPORTED);
    CHECK_STATUS(zxc_bayer_binning(&mono, raw, sizeof raw, ZXC_BAYER_RGGB, 2), ZX_E_FAIL);
    CHECK_STATUS(zxc_bayer_binning(&colour, raw, 32 * 16 - 1, ZXC_BAYER_RGGB, 2), ZX_E_FAIL);
    CHECK_STATUS(zxc_bayer_binning(&colour, raw, sizeof raw, 9, 2), ZX_E_FAIL);
    CHECK(mono_data[0] == 200 && mono_data[127] == 200 && colour_data[0] == 100 && colour_data[383] == 100);

    /* accurate white: outputs stay as they were */
    CHECK_STATUS(zxc_accurate_auto_white(&mono, NULL, 0, 0, 0, &gain, NULL, NULL, &examined), ZX_E_NOTSUPPORTED);
    CHECK_STATUS(zxc_accurate_auto_white(&colour, NULL, 1.5, 0, 0, &gain, NULL, NULL, &examined), ZX_E_FAIL);
    CHECK_STATUS(zxc_accurate_auto_white(&colour, NULL, 0, NAN, 0, &gain, NULL, NULL, &examined), ZX_E_FAIL);
    CHECK_STATUS(zxc_accurate_auto_white(&colour, &beside, 0, 0, 0, &gain, NULL, NULL, &examined), ZX_E_FAIL);
    CHECK_STATUS(zxc_accurate_auto_white(&colour, &type0, 0, 0, 0, &gain, NULL, NULL, &examined), ZX_E_FAIL);
    CHECK_STATUS(zxc_accurate_auto_white(NULL, NULL, 0, 0, 0, &gain, NULL, NULL, &examined), ZX_E_FAIL);
    CHECK(gain == -1.0 && examined == 7);
    CHECK_STATUS(zxc_accurate_auto_white(&colour, NULL, 0, 0, 0, NULL, NULL, NULL, NULL), ZX_OK);

    /* refusals are statuses, not diagnostic assertions */
    CHECK(ref_diag_count() == diag_before);
    zxc_histogram_destroy(hm);
    zxc_histogram_destroy(hc);
    zxc_ae_destroy(ae);
    zxc_mono_lut_destroy(mlut);
    zxc_lut_destroy(lut);
}

int main(void)
{
    ref_diag_count(); /* counts from here on */
    test_histograms();
    test_auto_exposure();
    test_luts();
    test_demosaic_and_binning();
    test_accurate_white();
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
