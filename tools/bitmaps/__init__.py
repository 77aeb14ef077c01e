"""The pictures that tools/make_bitmaps draws, and what they are drawn with."""
