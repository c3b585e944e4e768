#!/usr/bin/python3
"""Makes climate series (CCD files) out of an EPW weather file.

    epw2ccd.py WEATHER.epw [-o DIRECTORY] [--direct global|normal]

Writes into DIRECTORY (default: beside the weather file, in a directory of its name) one file per quantity,
named after the key word of the condition:

    file           unit     EPW field                                 time of a value
    TEMPER.ccd     C        dry bulb temperature                      end of the hour
    RELHUM.ccd     %        relative humidity                         end of the hour
    GASPRESS.ccd   Pa       atmospheric station pressure              end of the hour
    WINDVEL.ccd    m/s      wind speed                                end of the hour
    WINDDIR.ccd    Deg      wind direction (from; N 0, E 90)          end of the hour
    CLOUDCOV.ccd   1/10     total sky cover                           end of the hour
    DIRRAD.ccd     W/m2     direct radiation on the horizontal plane  middle of the hour
    DIFRAD.ccd     W/m2     diffuse horizontal radiation              middle of the hour
    SKYEMISS.ccd   W/m2     horizontal infrared radiation of the sky  middle of the hour
    HORRAIN.ccd    l/m2h    liquid precipitation depth                middle of the hour

Time. Line h = 1..24 of a day in the EPW file covers the hour from h-1 to h of local standard time, without
daylight saving. Readings of an instant are those of the end of the hour and get the time h:00. Radiation and
rain are sums or means over the hour and get its middle, h-1:30; joined by straight lines they keep the sum
of the year. Day 0 is the 1st of January. So that the series cover a year from 0 to 365 days and can be
repeated, an instant's series begins with the last value of the year; a series of means begins and ends with
its first and last value held for half an hour. Years of the file are ignored (typical years are made of
months of several years), a 29th of February is left out.

Direct radiation on the horizontal plane is global minus diffuse horizontal radiation (--direct global, the
default): that keeps the global radiation of the file. With --direct normal, or in hours without global
radiation, it is the direct normal radiation times the sine of the solar altitude, averaged over the hour,
while the sun is above the horizon. Radiation below zero becomes zero, humidity is kept within 0..100 %.

Rain: a depth that was collected over several hours is spread evenly over them.

Missing values get no point: the series runs straight across the gap, which is told. Sky radiation of zero
counts as missing. A quantity without any value gets no file, nor does a precipitation that is zero all the
year: it was not measured. The direction of the wind is written as it stands: between 350 and 10 degrees a
straight line passes south.
"""

import argparse
import csv
import dataclasses
import math
import pathlib
import sys

import sun

MONTH_DAYS = (31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31)
HOURS = 8760
HEADER_LINES = 8
MAX_RAIN_HOURS = 24

# Columns of a data line, counted from 0.
TEMPERATURE, HUMIDITY, PRESSURE = 6, 8, 9
SKY, GLOBAL, NORMAL, DIFFUSE = 12, 13, 14, 15
WIND_DIRECTION, WIND_SPEED, CLOUDS = 20, 21, 22
RAIN, RAIN_HOURS = 33, 34

# From here on a value of a column means that there is none.
MISSING = {
    TEMPERATURE: 99.9,
    HUMIDITY: 999.0,
    PRESSURE: 999999.0,
    SKY: 9999.0,
    GLOBAL: 9999.0,
    NORMAL: 9999.0,
    DIFFUSE: 9999.0,
    WIND_DIRECTION: 999.0,
    WIND_SPEED: 999.0,
    CLOUDS: 99.0,
    RAIN: 999.0,
    RAIN_HOURS: 99.0,
}


class EpwError(Exception):
    """A weather file that cannot be used; the text is for the user."""


@dataclasses.dataclass
class Weather:
    """Place and data lines of a year; a missing value is None."""

    place: str
    latitude: float
    longitude: float
    time_zone: float
    columns: dict  # column -> list of 8760 values


def calendar():
    """Month, day and hour of each hour of a year."""
    for month, days in enumerate(MONTH_DAYS, 1):
        for day in range(1, days + 1):
            for hour in range(1, 25):
                yield month, day, hour


def number(text, line, what):
    try:
        value = float(text)
    except ValueError:
        value = math.nan
    if not math.isfinite(value):
        raise EpwError(f"line {line}: {what} '{text}' is not a number")
    return value


def read_location(fields):
    if len(fields) < 9 or fields[0].strip().upper() != "LOCATION":
        raise EpwError("line 1: the file does not begin with LOCATION")
    fields = [" ".join(field.split()) for field in fields]
    latitude, longitude, time_zone = (
        number(fields[i], 1, what) for i, what in ((6, "latitude"), (7, "longitude"), (8, "time zone"))
    )
    place = (
        f"{fields[1]}, {fields[3]} (source {fields[4]}, WMO {fields[5]}), latitude {fields[6]} Deg, "
        f"longitude {fields[7]} Deg, time zone {fields[8]} h"
    )
    return place, latitude, longitude, time_zone


def read_value(fields, column, line):
    """Empty fields and, where lines are short, the fields behind their end are missing."""
    text = fields[column].strip() if column < len(fields) else ""
    if not text:
        return None
    value = number(text, line, f"field {column + 1}")
    return None if value >= MISSING[column] else value


def read_epw(text):
    """Weather of a text in EPW format: hourly data of a whole year."""
    lines = text.splitlines()
    rows = list(csv.reader(lines))
    if not rows:
        raise EpwError("the file is empty")
    place, latitude, longitude, time_zone = read_location(rows[0])
    columns = {column: [] for column in MISSING}
    days = calendar()
    for line, fields in enumerate(rows[HEADER_LINES:], HEADER_LINES + 1):
        if not fields:
            continue
        if len(fields) <= CLOUDS:
            raise EpwError(f"line {line}: too few fields")
        date = tuple(int(number(fields[i], line, f"field {i + 1}")) for i in (1, 2, 3))
        if date[:2] == (2, 29):
            continue
        expected = next(days, None)
        if date != expected:
            raise EpwError(f"line {line}: not the next hour of a year of hourly data: month, day, hour {date}")
        for column in MISSING:
            columns[column].append(read_value(fields, column, line))
    if len(columns[TEMPERATURE]) != HOURS:
        raise EpwError(f"{len(columns[TEMPERATURE])} hours of data, not a whole year")
    return Weather(place, latitude, longitude, time_zone, columns)


def direct_horizontal(weather, method):
    c = weather.columns
    series = []
    for hour, (whole, normal, diffuse) in enumerate(zip(c[GLOBAL], c[NORMAL], c[DIFFUSE])):
        value = None
        if method == "global" and whole is not None and diffuse is not None:
            value = whole - diffuse
        elif normal is not None:
            sine = sun.mean_sine_above_horizon(hour, weather.latitude, weather.longitude, weather.time_zone)
            value = normal * sine
        series.append(None if value is None else max(value, 0.0))
    return series


def rain(weather):
    """[l/m2h]; None for a year without any."""
    series = list(weather.columns[RAIN])
    if not any(series):
        return None
    for hour, (depth, hours) in enumerate(zip(weather.columns[RAIN], weather.columns[RAIN_HOURS])):
        if not depth or hours is None or not 1 < hours <= MAX_RAIN_HOURS:
            continue
        first = max(hour - int(hours) + 1, 0)
        series[hour] -= depth
        for i in range(first, hour + 1):
            series[i] = (series[i] or 0.0) + depth / (hour + 1 - first)
    return series


def not_negative(series):
    return [None if value is None else max(value, 0.0) for value in series]


def quantities(weather, method="global"):
    """Name, unit, series and whether its values are means over the hour."""
    c = weather.columns
    return [
        ("TEMPER", "C", c[TEMPERATURE], False),
        ("RELHUM", "%", [None if v is None else min(max(v, 0.0), 100.0) for v in c[HUMIDITY]], False),
        ("GASPRESS", "Pa", c[PRESSURE], False),
        ("WINDVEL", "m/s", not_negative(c[WIND_SPEED]), False),
        ("WINDDIR", "Deg", c[WIND_DIRECTION], False),
        ("CLOUDCOV", "1/10", c[CLOUDS], False),
        ("DIRRAD", "W/m2", direct_horizontal(weather, method), True),
        ("DIFRAD", "W/m2", not_negative(c[DIFFUSE]), True),
        ("SKYEMISS", "W/m2", [v if v is not None and v > 0.0 else None for v in c[SKY]], True),
        ("HORRAIN", "l/m2h", rain(weather), True),
    ]


def time_text(minutes):
    return f"{minutes // 1440} {minutes // 60 % 24:02d}:{minutes % 60:02d}:00"


def points(series, is_mean):
    """Minutes from the start of the year, and values."""
    last_minute = 60 * HOURS
    if is_mean:
        found = [(60 * hour + 30, value) for hour, value in enumerate(series) if value is not None]
        return [(0, found[0][1])] + found + [(last_minute, found[-1][1])]
    found = [(60 * (hour + 1), value) for hour, value in enumerate(series) if value is not None]
    if found[-1][0] < last_minute:
        found.append((last_minute, found[-1][1]))
    return [(0, found[-1][1])] + found


def ccd_text(place, name, unit, series, is_mean):
    kind = "hourly means at mid-hour" if is_mean else "hourly values at the end of the hour"
    lines = [f"# {place}", f"# hourly, converted from EPW; {kind}", f"{name} {unit}", ""]
    lines += [f"{time_text(minute)} {value:g}" for minute, value in points(series, is_mean)]
    return "\n".join(lines) + "\n"


def convert(weather, directory, method, tell):
    directory.mkdir(parents=True, exist_ok=True)
    for name, unit, series, is_mean in quantities(weather, method):
        missing = HOURS if series is None else series.count(None)
        if missing == HOURS:
            tell(f"{name}: no values, no file")
            continue
        if missing:
            tell(f"{name}: {missing} of {HOURS} values are missing")
        text = ccd_text(weather.place, name, unit, series, is_mean)
        (directory / f"{name}.ccd").write_bytes(text.encode("utf-8"))


def decoded(content):
    try:
        return content.decode("utf-8-sig")
    except UnicodeDecodeError:
        return content.decode("latin-1")


def main(arguments=None):
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("weather", type=pathlib.Path, help="EPW file")
    parser.add_argument("-o", "--output", type=pathlib.Path, help="directory of the series")
    parser.add_argument("--direct", choices=("global", "normal"), default="global", help="source of DIRRAD")
    options = parser.parse_args(arguments)
    directory = options.output or options.weather.with_suffix("")

    def tell(text):
        print(text, file=sys.stderr)

    try:
        weather = read_epw(decoded(options.weather.read_bytes()))
        convert(weather, directory, options.direct, tell)
    except (EpwError, OSError, csv.Error) as error:
        tell(f"epw2ccd.py: {options.weather}: {error}")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
