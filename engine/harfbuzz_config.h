// Read by HarfBuzz after its own choice of a lean build, which leaves out the
// CFF outlines that subsetting an OpenType font needs.
#undef HB_NO_CFF
