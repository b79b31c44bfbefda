"""Pictures in a document.

Two maps drawn as Encapsulated PostScript and set into a page of text at their bounding boxes, as a word processor does
it. Only the document shows its page; the pictures leave its state as it was.
"""

from pathlib import Path
import sys
import tempfile

from Yul import GribFile, contour_map

FIELD = Path(__file__).parent.parent / 'data' / 'height500.grib2'
WIDTH, SCALE = 756, 0.56  # points of a picture's box, and how large it stands on the page

BEGIN = """/state save def /dictionaries countdictstack def /operands count 1 sub def userdict begin
/showpage {{}} def 0 setgray 0 setlinecap 1 setlinewidth 0 setlinejoin [] 0 setdash newpath
{x} {y} translate {scale} {scale} scale
%%BeginDocument: {name}
"""
END = """%%EndDocument
count operands sub {pop} repeat countdictstack dictionaries sub {end} repeat state restore
"""
TEXTS = [(742, 20, 'Upper air, North Atlantic'), (722, 11, 'Lines and bands of one field, each a picture of its own.'),
         (30, 9, 'The boxes show what the document knows of the pictures: their bounding boxes.')]

grid = next(iter(GribFile(str(FIELD))))
area = 'stereo:90:-25,53,-25,57,43,1.5'
pictures = {}
with tempfile.TemporaryDirectory() as folder:
    contour_map(grid, f'{folder}/lines.eps', domain=area, interval=60, color=False)
    contour_map(grid, f'{folder}/bands.eps', domain=area, interval=120, fill=True, labels=False)
    for file in Path(folder).iterdir():
        pictures[file.name] = file.read_text(encoding='latin-1')

x = (612 - WIDTH * SCALE) / 2
with open(sys.argv[1], 'w', encoding='latin-1') as page:
    page.write('%!PS-Adobe-3.0\n%%Pages: 1\n%%EndComments\n%%Page: 1 1\n')
    for y, size, text in TEXTS:
        page.write(f'/Helvetica findfont {size} scalefont setfont {x} {y} moveto ({text}) show\n')
    for name, y in (('lines.eps', 384), ('bands.eps', 50)):
        picture = pictures[name]
        left, bottom, right, top = (int(word) for word in picture.split('%%BoundingBox: ')[1].split('\n')[0].split())
        page.write(f'0.6 setgray 0.5 setlinewidth {x} {y} {(right - left) * SCALE} {(top - bottom) * SCALE} rectstroke\n')
        page.write(BEGIN.format(x=x - left * SCALE, y=y - bottom * SCALE, scale=SCALE, name=name) + picture + END)
    page.write('showpage\n%%EOF\n')
