#!/usr/bin/python3
"""Tests of epw2ccd.py: times and values of the series, gaps, bad files, measured weather, and the solver."""

import contextlib
import io
import math
import os
import pathlib
import sys
import tempfile
import unittest

TOOLS = pathlib.Path(os.path.abspath(__file__)).parent.parent
STATIONS = TOOLS.parent.parent / "shared" / "climate"
sys.path.insert(0, str(TOOLS))
import epw2ccd  # noqa: E402
import solver_reads  # noqa: E402
import sun  # noqa: E402

GREENWICH = "LOCATION,Greenwich,-,GBR,made,00000,51.48,0.0,0.0,10.0"
MEANS = ("DIRRAD", "DIFRAD", "SKYEMISS", "HORRAIN")
DEFAULTS = {6: 10, 7: 5, 8: 70, 9: 101300, 12: 300, 13: 0, 14: 0, 15: 0, 20: 270, 21: 3, 22: 5, 23: 2, 33: 0, 34: 1}


def epw_text(changes=None, leap=False, hours=None):
    """A year of constant weather with changes {hour of the year, from 0: {column: text}}."""
    lines = [GREENWICH] + ["HEADER"] * 7
    hour_of_year = 0
    for month, day, hour in epw2ccd.calendar():
        if leap and (month, day, hour) == (3, 1, 1):
            lines += [line.replace(",2,28,", ",2,29,") for line in lines[-24:]]
        fields = [str(DEFAULTS.get(column, 0)) for column in range(35)]
        fields[:5] = ["2005", str(month), str(day), str(hour), "0"]
        for column, text in (changes or {}).get(hour_of_year, {}).items():
            fields[column] = str(text)
        lines.append(",".join(fields))
        hour_of_year += 1
    return "\r\n".join(lines[: None if hours is None else 8 + hours]) + "\r\n"


def series(text, method="global"):
    """{name: {minute: value}} of the quantities of an EPW text."""
    result = {}
    for name, _, values, is_mean in epw2ccd.quantities(epw2ccd.read_epw(text), method):
        if values is not None and any(value is not None for value in values):
            result[name] = dict(epw2ccd.points(values, is_mean))
    return result


def read_ccd(path):
    """Header words and {minute: value}."""
    lines = [line for line in path.read_text(encoding="utf-8").splitlines() if line and line[0] != "#"]
    values = {}
    for line in lines[1:]:
        day, time, value = line.split()
        hour, minute, _ = time.split(":")
        values[int(day) * 1440 + int(hour) * 60 + int(minute)] = float(value)
    return lines[0].split(), values


def straight_line_sum(points):
    """[unit h] of the values joined by straight lines."""
    items = list(points.items())
    return sum((b[0] - a[0]) / 60 * (a[1] + b[1]) / 2 for a, b in zip(items, items[1:]))


class Times(unittest.TestCase):
    def test_instant_values_stand_at_the_end_of_their_hour(self):
        s = series(epw_text({0: {6: 1.5, 8: 50, 9: 99000, 20: 10, 21: 7, 22: 9}}))
        expected = {"TEMPER": 1.5, "RELHUM": 50, "GASPRESS": 99000, "WINDDIR": 10, "WINDVEL": 7, "CLOUDCOV": 9}
        for name, value in expected.items():
            self.assertEqual(s[name][60], value, name)
            self.assertNotEqual(s[name][120], value, name)
            self.assertNotIn(30, s[name], name)

    def test_means_stand_in_the_middle_of_their_hour(self):
        s = series(epw_text({12: {12: 280, 13: 500, 15: 200, 33: 4}}))
        for name, value in {"SKYEMISS": 280, "DIRRAD": 300, "DIFRAD": 200, "HORRAIN": 4}.items():
            self.assertEqual(s[name][12 * 60 + 30], value, name)
            self.assertNotEqual(s[name][13 * 60 + 30], value, name)

    def test_instant_series_begins_with_the_end_of_the_year(self):
        s = series(epw_text({8759: {6: -3}}))["TEMPER"]
        self.assertEqual((s[0], s[365 * 1440], len(s)), (-3, -3, 8761))

    def test_series_of_means_holds_its_ends(self):
        s = series(epw_text({0: {33: 2}, 8759: {33: 3}}))["HORRAIN"]
        self.assertEqual((s[0], s[30], s[365 * 1440 - 30], s[365 * 1440], len(s)), (2, 2, 3, 3, 8762))

    def test_straight_lines_keep_the_sum_of_the_means(self):
        s = series(epw_text({0: {33: 2}, 1: {33: 7}, 5000: {33: 1.5}, 8759: {33: 3}}))["HORRAIN"]
        self.assertAlmostEqual(straight_line_sum(s), 13.5, places=9)

    def test_leap_day_is_left_out(self):
        changes = {59 * 24: {6: 21}}
        self.assertEqual(series(epw_text(changes, leap=True)), series(epw_text(changes)))

    def test_time_is_written_as_day_and_clock(self):
        self.assertEqual(epw2ccd.time_text(0), "0 00:00:00")
        self.assertEqual(epw2ccd.time_text(1440 + 13 * 60 + 30), "1 13:30:00")
        self.assertEqual(epw2ccd.time_text(365 * 1440), "365 00:00:00")


class Values(unittest.TestCase):
    def test_direct_radiation_is_never_negative(self):
        s = series(epw_text({12: {13: 90, 15: 100}}))
        self.assertEqual(s["DIRRAD"][12 * 60 + 30], 0)

    def test_direct_radiation_of_normal_radiation_is_that_times_the_sine_of_the_altitude(self):
        # Noon of the 21st of June in Greenwich: altitude 90 - 51.48 + 23.44 degrees.
        hour = (31 + 28 + 31 + 30 + 31 + 20) * 24 + 12
        s = series(epw_text({hour: {13: 999, 14: 800, 15: 111}}), "normal")["DIRRAD"][hour * 60 + 30]
        self.assertAlmostEqual(s / (800 * math.sin(math.radians(61.96))), 1, delta=0.01)

    def test_direct_radiation_uses_normal_radiation_where_global_is_missing(self):
        changes = {4000: {13: 9999, 14: 500, 15: 100}}
        minute = 4000 * 60 + 30
        text = epw_text(changes)
        self.assertEqual(series(text)["DIRRAD"][minute], series(text, "normal")["DIRRAD"][minute])
        self.assertGreater(series(text)["DIRRAD"][minute], 0)

    def test_normal_radiation_at_midnight_gives_none(self):
        self.assertEqual(series(epw_text({0: {14: 100}}), "normal")["DIRRAD"][30], 0)

    def test_cloud_cover_is_the_total_one(self):
        self.assertEqual(series(epw_text({3: {22: 8, 23: 1}}))["CLOUDCOV"][240], 8)

    def test_humidity_stays_within_100_percent(self):
        self.assertEqual(series(epw_text({3: {8: 103}}))["RELHUM"][240], 100)

    def test_rain_of_several_hours_is_spread_over_them(self):
        s = series(epw_text({10: {33: 6, 34: 3}}))["HORRAIN"]
        self.assertEqual([s[h * 60 + 30] for h in range(7, 12)], [0, 2, 2, 2, 0])

    def test_rain_of_an_unknown_time_belongs_to_its_hour(self):
        self.assertEqual(series(epw_text({10: {33: 6, 34: 99}}))["HORRAIN"][10 * 60 + 30], 6)


class Gaps(unittest.TestCase):
    def test_missing_value_has_no_point(self):
        marks = {6: 99.9, 8: 999, 9: 999999, 12: 9999, 13: 9999, 14: 9999, 15: 9999, 20: 999, 21: 999, 22: 99, 33: 999}
        full = series(epw_text({5: {33: 1}}))
        gap = series(epw_text({5: {33: 1}, 100: marks}))
        for name, values in full.items():
            minute = 100 * 60 + (30 if name in MEANS else 60)
            self.assertIn(minute, values)
            self.assertEqual({k: v for k, v in values.items() if k != minute}, gap[name], name)

    def test_empty_field_is_missing(self):
        self.assertNotIn(240, series(epw_text({3: {6: ""}}))["TEMPER"])

    def test_missing_end_takes_the_last_value(self):
        s = series(epw_text({8758: {6: 4}, 8759: {6: 99.9}}))["TEMPER"]
        self.assertEqual((s[0], s[365 * 1440]), (4, 4))

    def test_rain_that_is_never_measured_is_left_out(self):
        self.assertNotIn("HORRAIN", series(epw_text()))

    def test_sky_radiation_of_zero_is_missing(self):
        self.assertNotIn(3 * 60 + 30, series(epw_text({3: {12: 0}}))["SKYEMISS"])

    def test_gaps_and_left_out_quantities_are_told(self):
        with tempfile.TemporaryDirectory() as folder:
            told = []
            weather = epw2ccd.read_epw(epw_text({3: {6: 99.9}}))
            epw2ccd.convert(weather, pathlib.Path(folder), "global", told.append)
            self.assertEqual(told, ["TEMPER: 1 of 8760 values are missing", "HORRAIN: no values, no file"])
            self.assertFalse((pathlib.Path(folder) / "HORRAIN.ccd").exists())


class BadFiles(unittest.TestCase):
    def check(self, text, part):
        with self.assertRaises(epw2ccd.EpwError) as caught:
            epw2ccd.read_epw(text)
        self.assertIn(part, str(caught.exception))

    def test_empty_file(self):
        self.check("", "empty")

    def test_other_file(self):
        self.check("TEMPER C\n0 00:00:00 3\n", "LOCATION")

    def test_part_of_a_year(self):
        self.check(epw_text(hours=100), "100 hours of data, not a whole year")

    def test_hour_that_is_left_out(self):
        lines = epw_text().splitlines()
        del lines[20]
        self.check("\n".join(lines), "line 21: not the next hour")

    def test_more_than_a_year(self):
        self.check(epw_text() + epw_text().splitlines()[8] + "\n", "line 8769: not the next hour")

    def test_word_in_place_of_a_number(self):
        self.check(epw_text({2: {6: "warm"}}), "line 11: field 7 'warm' is not a number")

    def test_value_that_is_not_finite(self):
        self.check(epw_text({2: {6: "nan"}}), "line 11: field 7 'nan' is not a number")

    def test_short_line(self):
        self.check("\n".join([GREENWICH] + ["x"] * 7 + ["2005,1,1,1,0"]), "line 9: too few fields")

    def test_command_reports_the_file_and_fails(self):
        errors = io.StringIO()
        with contextlib.redirect_stderr(errors):
            self.assertEqual(epw2ccd.main(["/no/such.epw"]), 1)
        self.assertIn("/no/such.epw", errors.getvalue())


class Sun(unittest.TestCase):
    def test_declination_of_solstices_and_equinox(self):
        self.assertAlmostEqual(math.degrees(sun.declination(171.5 * 24)), 23.44, delta=0.05)
        self.assertAlmostEqual(math.degrees(sun.declination(354.5 * 24)), -23.44, delta=0.05)
        self.assertAlmostEqual(math.degrees(sun.declination(78.9 * 24)), 0.0, delta=0.3)

    def test_equation_of_time_of_its_extremes(self):
        # The sundial is slowest about the 11th of February and fastest about the 3rd of November.
        self.assertAlmostEqual(60 * sun.equation_of_time(41.5 * 24), -14.2, delta=0.3)
        self.assertAlmostEqual(60 * sun.equation_of_time(306.5 * 24), 16.4, delta=0.3)

    def test_noon_is_later_west_of_the_meridian_of_the_clock(self):
        day = 103.0 * 24  # the equation of time is about zero
        heights = {m: sun.sine_of_altitude(day + m / 60, 50, 0, 1) for m in range(720, 840)}
        self.assertAlmostEqual(max(heights, key=heights.get), 780, delta=2)

    def test_altitude_at_noon_is_that_of_the_meridian(self):
        hour = 171 * 24 + 12 - sun.equation_of_time(171 * 24 + 12)
        expected = math.cos(math.radians(51.48) - sun.declination(hour))
        self.assertAlmostEqual(sun.sine_of_altitude(hour, 51.48, 0, 0), expected, places=6)

    def test_nothing_above_the_horizon_at_night(self):
        self.assertEqual(sun.extraterrestrial_horizontal(0, 51.48, 0, 0), 0)


@unittest.skipUnless(solver_reads.PROGRAM.exists(), f"no program {solver_reads.PROGRAM}")
class Solver(unittest.TestCase):
    def files(self, folder):
        weather = epw2ccd.read_epw(epw_text({5: {33: 1}, 12: {8: 100, 13: 300, 15: 100}}))
        epw2ccd.convert(weather, pathlib.Path(folder), "global", lambda text: None)
        return {name: pathlib.Path(folder) / f"{name}.ccd" for name, _, _, _ in epw2ccd.quantities(weather)}

    def test_all_series_are_read(self):
        with tempfile.TemporaryDirectory() as folder:
            files = self.files(folder)
            self.assertEqual(len(files), 10)
            code, output = solver_reads.initialize(files)
            self.assertEqual(code, 0, output)

    def test_each_spoilt_series_is_found(self):
        with tempfile.TemporaryDirectory() as folder:
            files = self.files(folder)
            for name, path in files.items():
                good = path.read_bytes()
                path.write_bytes(good + b"garbage\n")
                code, output = solver_reads.initialize(files)
                path.write_bytes(good)
                self.assertEqual(code, 1, name)
                self.assertIn(path.name, output)


@unittest.skipUnless(STATIONS.is_dir(), f"no measured weather in {STATIONS}")
class Stations(unittest.TestCase):
    """Measured and typical years beside the repository, each with series made of it independently.

    They share every convention of this tool: instants at the end of the hour, means in its middle, the ends of
    the year, direct as global minus diffuse radiation, the total sky cover, six digits."""

    def stations(self):
        files = sorted(STATIONS.glob("*.epw"))
        self.assertTrue(files)
        for file in files:
            yield file, epw2ccd.read_epw(epw2ccd.decoded(file.read_bytes()))

    def test_series_agree_point_by_point(self):
        with tempfile.TemporaryDirectory() as folder:
            for file, weather in self.stations():
                directory = pathlib.Path(folder) / file.stem
                epw2ccd.convert(weather, directory, "global", lambda text: None)
                expected = sorted((STATIONS / file.stem).glob("*.ccd"))
                self.assertEqual(sorted(p.name for p in directory.iterdir()), [p.name for p in expected])
                for path in expected:
                    header, values = read_ccd(path)
                    own_header, own = read_ccd(directory / path.name)
                    self.assertEqual(own_header, header)
                    self.assertEqual(own.keys(), values.keys())
                    for minute, value in values.items():
                        # half a unit of the sixth digit either way
                        self.assertTrue(math.isclose(own[minute], value, rel_tol=1.1e-5), (path, minute))

    def test_both_sources_of_direct_radiation_agree_over_the_year(self):
        # The sources differ in rounding and in the hours of sunrise and sunset; a clock that is wrong by an
        # hour would be seen in the root mean square.
        for file, weather in self.stations():
            whole = epw2ccd.direct_horizontal(weather, "global")
            normal = epw2ccd.direct_horizontal(weather, "normal")
            self.assertAlmostEqual(sum(normal) / sum(whole), 1, delta=0.03, msg=file)
            rms = math.sqrt(sum((a - b) ** 2 for a, b in zip(whole, normal)) / len(whole))
            self.assertLess(rms, 15, file)
            late = [0.0] + normal[:-1]
            self.assertGreater(math.sqrt(sum((a - b) ** 2 for a, b in zip(whole, late)) / len(whole)), 30, file)

    def test_global_radiation_stays_below_that_above_the_atmosphere(self):
        for file, weather in self.stations():
            place = (weather.latitude, weather.longitude, weather.time_zone)
            for hour, value in enumerate(weather.columns[epw2ccd.GLOBAL]):
                self.assertLessEqual(value, sun.extraterrestrial_horizontal(hour, *place) + 60, (file, hour))


if __name__ == "__main__":
    unittest.main()
