#!/usr/bin/env python3
"""Generates the climate series of the climate database: one synthetic year, hour by hour.

    python3 tools/generate_climate.py [--directory database/DB_climate_data]

writes

* germany_temperature.ccd: outdoor air temperature. It is made from
  - the monthly means below, joined by an annual course that keeps them,
  - a daily course with its maximum at three in the afternoon, its range depending on month and weather,
  - deviations from day to day: a first order autoregressive process.
* germany_indoor_temperature.ccd: temperature of a room in that climate, after EN 15026, annex C:
  20 C while the daily mean outdoors is below 10 C, 25 C while it is above 20 C, linear in between.
* germany_relative_humidity.ccd, germany_air_pressure.ccd, germany_wind_velocity.ccd, germany_wind_direction.ccd,
  germany_cloud_cover.ccd, germany_sky_radiation.ccd, germany_direct_radiation.ccd, germany_diffuse_radiation.ccd,
  germany_rain.ccd: the weather that goes with the temperature, see weather_year.py.

The year has 365 days and closes: the value of its last point equals that of its first. The series are
synthetic; they have the mean and the variability of the climate but are no record of any place or year.

Monthly means: area mean of the air temperature in Germany, reference period 1991-2020, as quoted by
Deutscher Wetterdienst (DWD) in its monthly press releases "Deutschlandwetter" of 2023; mean of the year
9.3 C. The other figures are round values chosen for Central European lowlands.
"""

import argparse
import math
import pathlib

from weather_year import weather_year
from year_courses import DAYS, HOURS, Random, annual_course, day_to_hours, monthly_averages

MONTHLY_MEANS = (0.9, 1.5, 4.6, 9.0, 13.1, 16.4, 18.3, 18.0, 13.8, 9.4, 4.8, 1.8)  # [C]

# Half the difference between the highest and lowest temperature of an average day [K].
DAILY_AMPLITUDES = (2.5, 3.0, 4.5, 5.5, 5.5, 5.5, 5.5, 5.5, 5.0, 4.0, 2.5, 2.0)

# Standard deviation of the daily means in midwinter and midsummer [K], correlation of successive days.
DEVIATION_WINTER, DEVIATION_SUMMER = 4.2, 3.0
CORRELATION = 0.78

# A day's amplitude may be smaller (overcast) or larger (clear) than the average by this share.
AMPLITUDE_SPREAD = 0.5

SEED = 19910101


def daily_deviations(random):
    """Deviation of each day from the annual course [K]. The process runs twice over the same impulses, so
    that it has forgotten its start and the end of the year fits the beginning."""
    impulses = [random.normal() * math.sqrt(1.0 - CORRELATION**2) for _ in range(DAYS)]
    state = 0.0
    states = []
    for impulse in impulses * 2:
        state = CORRELATION * state + impulse
        states.append(state)
    deviations = []
    for day, value in enumerate(states[DAYS:]):
        winter = 0.5 * (1.0 + math.cos(2.0 * math.pi * (day - 15) / DAYS))
        deviations.append(value * (DEVIATION_SUMMER + (DEVIATION_WINTER - DEVIATION_SUMMER) * winter))
    return deviations


def daily_shape():
    """Course of a day with mean 0 and half range 1. The second harmonic moves the minimum from three in
    the night towards sunrise."""
    angle = 2.0 * math.pi / 24
    raw = [math.cos(angle * (h - 15)) + 0.25 * math.cos(2.0 * angle * (h - 13.5)) for h in range(24)]
    half_range = (max(raw) - min(raw)) / 2
    return [value / half_range for value in raw]


def outdoor_temperature():
    """Hourly temperature [C]; the deviations [K] and the clearness of the days that it is made of."""
    random = Random(SEED)
    annual = annual_course(MONTHLY_MEANS)
    deviations = daily_deviations(random)
    clearness = [1.0 + AMPLITUDE_SPREAD * (2.0 * random.uniform() - 1.0) for _ in range(DAYS)]
    course, range_factor = day_to_hours(deviations), day_to_hours(clearness)
    amplitudes = annual_course(DAILY_AMPLITUDES)
    shape = daily_shape()
    weather = [course[h] + amplitudes[h] * range_factor[h] * shape[h % 24] for h in range(HOURS)]
    surplus = annual_course(monthly_averages(weather))
    return [annual[h] + weather[h] - surplus[h] for h in range(HOURS)], deviations, clearness


def indoor_temperature(outdoor):
    """EN 15026, annex C, on daily means."""
    means = [sum(outdoor[24 * day : 24 * day + 24]) / 24 for day in range(DAYS)]
    return day_to_hours([20.0 + 5.0 * min(max((mean - 10.0) / 10.0, 0.0), 1.0) for mean in means])


def write_ccd(path, comment, series, quantity="TEMPER C", decimals=2, is_mean=False):
    """Values at the full hours; means over the hour in its middle, half an hour before the first full hour."""
    lines = ["# " + line for line in comment] + [quantity, ""]
    if is_mean:
        # the mean of the first and the last value closes the year and keeps its sum
        edge = (series[0] + series[-1]) / 2
        lines.append(f"0 00:00:00 {edge:.{decimals}f}")
        lines += [f"{hour // 24} {hour % 24:02d}:30:00 {series[hour]:.{decimals}f}" for hour in range(HOURS)]
        lines.append(f"{DAYS} 00:00:00 {edge:.{decimals}f}")
    else:
        for hour in range(HOURS + 1):
            lines.append(f"{hour // 24} {hour % 24:02d}:00:00 {series[hour % HOURS]:.{decimals}f}")
    path.write_bytes(("\n".join(lines) + "\n").encode("ascii"))


def write_weather(directory, weather):
    """The files of the weather: name, what it is, quantity and unit, series, decimals, whether it is a mean."""
    files = (
        ("relative_humidity", "relative humidity", "RELHUM %", [100.0 * v for v in weather.humidity], 1, False),
        ("air_pressure", "air pressure", "GASPRESS Pa", weather.pressure, 0, False),
        ("wind_velocity", "wind velocity", "WINDVEL m/s", weather.wind_velocity, 1, False),
        ("wind_direction", "wind direction (from)", "WINDDIR Deg", weather.wind_direction, 0, False),
        ("cloud_cover", "cloud cover", "CLOUDCOV 1/10", [10.0 * v for v in weather.cloud], 1, False),
        ("sky_radiation", "long-wave radiation of the sky", "SKYEMISS W/m2", weather.sky, 1, False),
        ("direct_radiation", "direct radiation on the horizontal plane", "DIRRAD W/m2", weather.direct, 1, True),
        ("diffuse_radiation", "diffuse radiation on the horizontal plane", "DIFRAD W/m2", weather.diffuse, 1, True),
        ("rain", "rain on the horizontal plane", "HORRAIN l/m2h", weather.rain, 2, True),
    )
    for name, title, quantity, series, decimals, is_mean in files:
        times = "means at mid-hour" if is_mean else "values at the full hour"
        comment = (
            f"Synthetic {title} that goes with germany_temperature.ccd: hourly,",
            f"{times}, latitude 51 Deg, longitude 10 Deg, time zone 1 h, written by tools/generate_climate.py.",
        )
        write_ccd(directory / f"germany_{name}.ccd", comment, series, quantity, decimals, is_mean)


def main():
    default = pathlib.Path(__file__).resolve().parent.parent / "database" / "DB_climate_data"
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("--directory", type=pathlib.Path, default=default, help="where the files go")
    directory = parser.parse_args().directory
    directory.mkdir(parents=True, exist_ok=True)

    outdoor, deviations, clearness = outdoor_temperature()
    write_ccd(
        directory / "germany_temperature.ccd",
        (
            "Synthetic outdoor air temperature of a year in Germany, hourly, written by",
            "tools/generate_climate.py. Monthly means: DWD, area mean of Germany, 1991-2020.",
        ),
        outdoor,
    )
    write_ccd(
        directory / "germany_indoor_temperature.ccd",
        (
            "Indoor air temperature that goes with germany_temperature.ccd, after EN 15026, annex C;",
            "hourly, written by tools/generate_climate.py.",
        ),
        indoor_temperature(outdoor),
    )
    write_weather(directory, weather_year(outdoor, deviations, clearness))


if __name__ == "__main__":
    main()
