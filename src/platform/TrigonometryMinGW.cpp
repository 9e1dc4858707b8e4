/// @file
/// Sine and cosine of doubles from the system's C library, in place of MinGW's own.
///
/// Those are instructions of the processor that know 66 bits of pi: of the cosine of the double
/// nearest to pi / 2 only four digits are right.

// What the linker makes of the functions that msvcrt.dll exports.
extern "C" double (*const __imp_sin)(double);
extern "C" double (*const __imp_cos)(double);

extern "C" double sin(double angle) {
    return __imp_sin(angle);
}

extern "C" double cos(double angle) {
    return __imp_cos(angle);
}

// What the optimiser makes of both for one angle; these two stand in one object of MinGW's.
extern "C" void sincos(double angle, double* sine, double* cosine) {
    *sine = __imp_sin(angle);
    *cosine = __imp_cos(angle);
}

extern "C" void sincosf(float angle, float* sine, float* cosine) {
    *sine = static_cast<float>(__imp_sin(double{angle}));
    *cosine = static_cast<float>(__imp_cos(double{angle}));
}
