# The font list: an alias and what it stands for, the rest of the line.
# A name without a line here stands for itself.
modern modern.fnt
sans modern.fnt
default modern.fnt
