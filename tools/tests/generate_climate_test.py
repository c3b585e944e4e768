#!/usr/bin/python3
"""Tests of the shipped climate: what the script makes, sums, physical limits, and that it fits together."""

import math
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

TOOLS = pathlib.Path(os.path.abspath(__file__)).parent.parent
DATABASE = TOOLS.parent / "database" / "DB_climate_data"
sys.path.insert(0, str(TOOLS))
import solver_reads  # noqa: E402
import sun  # noqa: E402
import weather_year  # noqa: E402
import year_courses  # noqa: E402

PLACE = (51.0, 10.0, 1.0)
SERIES = {
    "temperature": "TEMPER C",
    "relative_humidity": "RELHUM %",
    "air_pressure": "GASPRESS Pa",
    "wind_velocity": "WINDVEL m/s",
    "wind_direction": "WINDDIR Deg",
    "cloud_cover": "CLOUDCOV 1/10",
    "sky_radiation": "SKYEMISS W/m2",
    "direct_radiation": "DIRRAD W/m2",
    "diffuse_radiation": "DIFRAD W/m2",
    "rain": "HORRAIN l/m2h",
}
MEANS = ("direct_radiation", "diffuse_radiation", "rain")


def path_of(name, directory=DATABASE):
    return directory / f"germany_{name}.ccd"


def read_ccd(path):
    """Line of quantity and unit, hours, values."""
    lines = [line for line in path.read_text(encoding="ascii").splitlines() if line and line[0] != "#"]
    hours, values = [], []
    for line in lines[1:]:
        day, clock, value = line.split()
        hour, minute, second = map(int, clock.split(":"))
        hours.append(24 * int(day) + hour + minute / 60 + second / 3600)
        values.append(float(value))
    return lines[0], hours, values


def mean(values):
    return sum(values) / len(values)


def differences(a, b):
    return [abs(x - y) for x, y in zip(a, b)]


class Climate(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.full = {name: read_ccd(path_of(name)) for name in SERIES}
        # the value of each hour: at its beginning, or its mean
        for name, (_, _, values) in cls.full.items():
            setattr(cls, name, values[1:-1] if name in MEANS else values[:-1])
        cls.whole = [a + b for a, b in zip(cls.direct_radiation, cls.diffuse_radiation)]

    def when(self, values, condition):
        return [value for value, holds in zip(values, condition) if holds]


class Files(Climate):
    def test_quantity_and_unit(self):
        for name, words in SERIES.items():
            self.assertEqual(self.full[name][0], words)

    def test_times(self):
        for name, (_, hours, _) in self.full.items():
            if name in MEANS:
                self.assertEqual(hours, [0.0] + [hour + 0.5 for hour in range(8760)] + [8760.0], name)
            else:
                self.assertEqual(hours, [float(hour) for hour in range(8761)], name)

    def test_year_closes(self):
        for name, (_, _, values) in self.full.items():
            self.assertEqual(values[0], values[-1], name)

    def test_no_step_between_the_years_is_larger_than_within(self):
        for name in SERIES:
            values = getattr(self, name)
            largest = max(differences(values, values[1:]))
            self.assertLessEqual(abs(values[-1] - values[0]), largest, name)

    def test_straight_lines_keep_the_sum_of_the_means(self):
        for name in MEANS:
            _, hours, values = self.full[name]
            area = sum(
                (h2 - h1) * (a + b) / 2 for h1, h2, a, b in zip(hours, hours[1:], values, values[1:])
            )
            self.assertAlmostEqual(area, sum(getattr(self, name)), delta=0.01, msg=name)

    def test_script_makes_the_shipped_files(self):
        with tempfile.TemporaryDirectory() as folder:
            command = [sys.executable, str(TOOLS / "generate_climate.py"), "--directory", folder]
            subprocess.run(command, check=True, timeout=100)
            names = sorted(path.name for path in pathlib.Path(folder).iterdir())
            self.assertEqual(names, sorted(path.name for path in DATABASE.glob("germany_*.ccd")))
            for name in SERIES:
                words, hours, values = read_ccd(path_of(name, pathlib.Path(folder)))
                self.assertEqual((words, hours), self.full[name][:2])
                # the last printed digit may depend on the mathematical library
                digit = {"air_pressure": 1.01, "wind_direction": 1.01, "rain": 0.0101, "temperature": 0.0101}
                self.assertLess(max(differences(values, self.full[name][2])), digit.get(name, 0.101), name)


class Sums(Climate):
    def test_rain_of_the_year_is_that_of_the_normals(self):
        self.assertAlmostEqual(sum(self.rain), 791, delta=2)

    def test_rain_falls_in_about_a_tenth_of_the_hours(self):
        self.assertTrue(600 <= sum(value >= 0.1 for value in self.rain) <= 1000)

    def test_rain_comes_in_events(self):
        starts = sum(b > 0 and a == 0 for a, b in zip(self.rain, self.rain[1:]))
        wet = sum(value > 0 for value in self.rain)
        self.assertTrue(2.0 < wet / starts < 8.0)

    def test_global_radiation_of_the_year(self):
        self.assertTrue(1000 <= sum(self.whole) / 1000 <= 1100)

    def test_diffuse_radiation_is_about_half_of_it(self):
        self.assertTrue(0.45 <= sum(self.diffuse_radiation) / sum(self.whole) <= 0.65)

    def test_mean_wind(self):
        self.assertTrue(3.0 <= mean(self.wind_velocity) <= 4.0)
        self.assertLess(max(self.wind_velocity), 25)

    def test_wind_prevails_from_the_west(self):
        west = sum(202.5 <= angle <= 337.5 for angle in self.wind_direction) / 8760
        east = sum(22.5 <= angle <= 157.5 for angle in self.wind_direction) / 8760
        self.assertGreater(west, 0.5)
        self.assertTrue(0.1 < east < 0.3)

    def test_mean_humidity(self):
        self.assertAlmostEqual(mean(self.relative_humidity), 78, delta=1)

    def test_winter_is_damper_and_cloudier_than_summer(self):
        january, june = slice(0, 744), slice(3624, 4344)
        for values in (self.relative_humidity, self.cloud_cover):
            self.assertGreater(mean(values[january]), 1.15 * mean(values[june]))

    def test_pressure_is_that_of_260_m(self):
        standard = 101325 * (1 - 2.25577e-5 * 260) ** 5.25588
        self.assertAlmostEqual(mean(self.air_pressure), standard, delta=300)

    def test_mean_sky_radiation(self):
        # about 320 W/m2 in Central Europe; the black body of the mean temperature has 360
        self.assertTrue(305 <= mean(self.sky_radiation) <= 335)


class Limits(Climate):
    def test_humidity_is_within_0_and_100_percent(self):
        self.assertGreater(min(self.relative_humidity), 15)
        self.assertLessEqual(max(self.relative_humidity), 100)

    def test_nothing_is_negative(self):
        for name in ("rain", "direct_radiation", "diffuse_radiation", "wind_velocity", "cloud_cover"):
            self.assertGreaterEqual(min(getattr(self, name)), 0, name)

    def test_cloud_cover_is_at_most_10_tenths(self):
        self.assertLessEqual(max(self.cloud_cover), 10)

    def test_radiation_is_below_that_above_the_atmosphere(self):
        for hour, value in enumerate(self.whole):
            self.assertLessEqual(value, 0.85 * sun.extraterrestrial_horizontal(hour, *PLACE) + 0.1, hour)

    def test_no_radiation_at_night(self):
        for hour, value in enumerate(self.whole):
            if sun.mean_sine_above_horizon(hour, *PLACE) == 0:
                self.assertEqual(value, 0, hour)

    def test_direct_radiation_normal_to_the_rays_is_below_that_above_the_atmosphere(self):
        for hour, value in enumerate(self.direct_radiation):
            sine = sun.mean_sine_above_horizon(hour, *PLACE)
            self.assertLessEqual(value, 1000 * sine + 0.1, hour)

    def test_day_is_symmetric_about_true_noon_under_a_clear_sky(self):
        clear = weather_year.clear_sky_radiation()
        moment = sum((hour % 24 + 0.5) * value for hour, value in enumerate(clear)) / sum(clear)
        # 10 degrees east on the clock of 15 degrees east: 20 minutes late
        self.assertAlmostEqual(moment, 12 + 20 / 60, delta=0.05)

    def test_wind_direction_never_passes_north(self):
        self.assertTrue(0 < min(self.wind_direction) and max(self.wind_direction) < 360)
        self.assertLess(max(differences(self.wind_direction, self.wind_direction[1:])), 60)

    def test_sky_radiation_is_below_the_black_body_of_the_air(self):
        for celsius, value in zip(self.temperature, self.sky_radiation):
            black = 5.670374e-8 * (celsius + 273.15) ** 4
            self.assertTrue(0.6 * black < value < black)

    def test_pressure_stays_within_that_of_weather(self):
        self.assertGreater(min(self.air_pressure), 94000)
        self.assertLess(max(self.air_pressure), 102500)


class Together(Climate):
    def setUp(self):
        self.wet = [value > 0 for value in self.rain]
        self.dry = [not value for value in self.wet]

    def test_rain_falls_from_clouds(self):
        self.assertGreaterEqual(min(self.when(self.cloud_cover, self.wet)), 8.5)

    def test_air_is_damp_in_rain(self):
        self.assertGreaterEqual(min(self.when(self.relative_humidity, self.wet)), 92.9)
        self.assertLess(mean(self.when(self.relative_humidity, self.dry)), 80)

    def test_rain_comes_with_low_pressure_and_wind_from_the_west(self):
        self.assertLess(mean(self.when(self.air_pressure, self.wet)), mean(self.air_pressure) - 300)
        angles = self.when(self.wind_direction, self.wet)
        self.assertGreater(sum(180 <= angle <= 337.5 for angle in angles) / len(angles), 0.75)
        self.assertGreater(mean(self.when(self.wind_velocity, self.wet)), mean(self.wind_velocity))

    def test_clear_days_have_more_radiation_than_overcast_days(self):
        june = range(151, 181)
        by_cover = sorted(june, key=lambda day: mean(self.cloud_cover[24 * day : 24 * day + 24]))
        sums = [sum(self.whole[24 * day : 24 * day + 24]) for day in by_cover]
        self.assertGreater(sum(sums[:10]), 1.5 * sum(sums[-10:]))

    def test_clear_days_have_a_larger_range_of_temperature(self):
        days = range(365)
        by_cover = sorted(days, key=lambda day: mean(self.cloud_cover[24 * day : 24 * day + 24]))
        ranges = [max(t) - min(t) for t in (self.temperature[24 * day : 24 * day + 24] for day in by_cover)]
        self.assertGreater(mean(ranges[:100]), 1.2 * mean(ranges[-100:]))

    def test_clouds_raise_the_radiation_of_the_sky(self):
        share = [v / (5.670374e-8 * (t + 273.15) ** 4) for t, v in zip(self.temperature, self.sky_radiation)]
        clear = self.when(share, [cover < 2 for cover in self.cloud_cover])
        overcast = self.when(share, [cover > 8 for cover in self.cloud_cover])
        self.assertGreater(mean(overcast), mean(clear) + 0.1)


class Pieces(unittest.TestCase):
    def test_dew_point_inverts_the_saturation_pressure(self):
        for celsius in (-15.0, 0.0, 12.5, 30.0):
            pressure = weather_year.saturation_pressure(celsius)
            self.assertAlmostEqual(weather_year.dew_point(pressure), celsius, places=9)

    def test_saturation_pressure_of_20_degrees(self):
        self.assertAlmostEqual(weather_year.saturation_pressure(20.0), 2339, delta=7)

    def test_overcast_sky_lets_a_quarter_through(self):
        self.assertAlmostEqual(weather_year.global_radiation(800.0, 1.0), 200.0)
        self.assertEqual(weather_year.global_radiation(800.0, 0.0), 800.0)

    def test_autoregressive_course_closes_and_is_standardised(self):
        series = weather_year.autoregressive(year_courses.Random(1), 0.9, 4000)
        self.assertAlmostEqual(mean(series), 0)
        self.assertAlmostEqual(mean([value * value for value in series]), 1)
        self.assertLess(abs(series[0] - series[-1]), 5 * math.sqrt(1 - 0.9**2))
        self.assertAlmostEqual(mean([a * b for a, b in zip(series, series[1:])]), 0.9, delta=0.03)


@unittest.skipUnless(solver_reads.PROGRAM.exists(), f"no program {solver_reads.PROGRAM}")
class Solver(unittest.TestCase):
    def test_all_series_are_read(self):
        files = {words.split()[0]: path_of(name) for name, words in SERIES.items()}
        code, output = solver_reads.initialize(files)
        self.assertEqual(code, 0, output)


if __name__ == "__main__":
    unittest.main()
