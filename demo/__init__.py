"""The demo: a small real search engine on this machine, made-up shops to search, and a project that tracks some."""
