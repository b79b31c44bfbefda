"""The module as a whole: its globals, its constants and the order of its classes."""

import _Yul as y
import pytest

# The classes that callers of the flat module may rely on, in their order, as far as they are built.
ORDER = '''String Strings Resrc Const Convert FloatArray FileAttr Yul UnitData Unit LclData Calc DateVal Date Buffer
Timezone ForeTime DateTool Rect EarthPoint EarthRange EarthPoints GridPoint GridPoints GridStats Color RGB ColorMap PlotAttr
ColorFill Enhance Point Points GeomBox Datum Filename NameConvFile NameConv FileTool CityData CityFile SfcData SfcFile
SfcWmoData SfcWmoFile MosData MosFile MetarFile MetarTool SynopTool Range VCoord Level Variable VarSpec VarNameItem VarName
DomainVal Domain DomainTool ResrcDBItem ResrcDBList ResrcDB Prog WmoProduct WmoParse ModelSpec GridSpec Grid Grids GribParam
GribPDB GribFile GridFile GridMath GridPiece GridRead Image ImageFile ImageTool GridTool NidsData NidsInfo NidsRadial
NidsRun NidsText NidsVector NidsWind NidsFile NidsImage StormAttr Listener GraphAttr Graph Plot Drawing Figure ContPlot
MapPlot ImagePlot NidsPlot RadPlot SatPlot SfcPlot MosPlot GridPlot FrontData FrontPlot WatchPlot WarnPlot LightPlot
DatumPlot MapFileHeader MapFile'''.split()


def test_classes_come_in_order_and_additions_after_them():
    classes = list(y._classes())
    listed = [name for name in classes if name in ORDER]
    assert listed == sorted(listed, key=ORDER.index) == classes[:len(listed)]


def test_every_class_can_be_registered_attached_and_deleted():
    for name in y._classes():
        for function in (f'{name}_registerclass', f'{name}_attach', f'delete_{name}'):
            assert callable(getattr(y, function)), function


def test_constants_are_ints_named_after_their_class():
    classes = tuple(f'{name}_' for name in y._classes())
    constants = {name: value for name, value in vars(y).items() if type(value) is int}
    assert all(name.startswith(classes) for name in constants)
    assert constants['Resrc_USER'] == 5 and constants['Yul_DEBUG8'] == 20


GLOBALS = [
    ('Const_MISS', -9999, False),
    ('Const_PI', 3.1415926535898, False),
    ('Domain_earth_rad', 63.7122, True),
    ('Domain_earth_maj', None, True),
    ('Domain_earth_min', None, True),
    ('Domain_OFFSET_LL', None, True),
    ('Domain_OFFSET_MERC', None, True),
    ('DateVal_num_day', 'int *', True),
    ('DateVal_num_day_leap', 'int *', True),
]


@pytest.mark.parametrize('name, value, is_writable', GLOBALS)
def test_globals_are_linked(name, value, is_writable):
    if name.split('_')[0] not in y._classes():
        pytest.skip(f'{name.split("_")[0]} is not built yet')
    before = getattr(y.cvar, name)
    if value == 'int *':
        assert "'int *'" in repr(before)
    elif value is not None:
        assert before == value
    if is_writable:
        setattr(y.cvar, name, before)
        with pytest.raises(TypeError, match=f"in variable 'Yul::{name.replace('_', '::', 1)}' of type '"):
            setattr(y.cvar, name, 'text')
    else:
        with pytest.raises(AttributeError, match=f'Variable {name} is read-only.'):
            setattr(y.cvar, name, before)


def test_tables_are_live():
    if 'DateVal' not in y._classes():
        pytest.skip('DateVal is not built yet')
    common, leap = y.cvar.DateVal_num_day, y.cvar.DateVal_num_day_leap
    assert common != leap and common == y.cvar.DateVal_num_day
    with pytest.raises(ValueError) as raised:
        y.cvar.DateVal_num_day = None
    assert str(raised.value) == "invalid null reference in variable 'Yul::DateVal::num_day' of type 'int [13]'"
    with pytest.raises(TypeError) as raised:
        y.cvar.DateVal_num_day_leap = y.new_DateVal()
    assert str(raised.value) == "in variable 'Yul::DateVal::num_day_leap' of type 'int [13]'"
