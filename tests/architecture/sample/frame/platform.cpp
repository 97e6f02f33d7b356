// The library asks for no platform.
#if defined(_WIN32)
#endif
