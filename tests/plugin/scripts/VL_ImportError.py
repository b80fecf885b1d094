# Fails while it is imported.
raise RuntimeError("broken at import")
