"""Synthetic weather that goes with a course of temperature: one year, hour by hour, that closes.

One hidden course, the weather of the day, drives everything: low days are clear, high days are overcast. It
follows the temperature (days of a small daily range are overcast, mild winter days are, warm summer days are
not) and its own chance. From it come

* rain: in the hours in which the hidden course, with showers of its own, exceeds the threshold of the month
  that is met by the share of wet hours; the amounts keep the monthly sums;
* cloud cover: a logistic function of the hidden course, at least RAIN_CLOUD while it rains; each month is shifted
  until the radiation has its monthly sum;
* global and diffuse radiation: F. Kasten and G. Czeplak, "Solar and terrestrial radiation dependent on the amount
  and type of cloud", Solar Energy 24 (1980), p. 177: clear sky 910 W/m2 sin h - 30 W/m2 with the altitude h, times
  1 - 0.75 N^3.4 under the cover N, of it diffuse 0.3 + 0.7 N^2;
* humidity: the vapour pressure changes from day to day, the temperature within a day; damp in rain; the
  monthly means are kept;
* wind: Weibull distribution of shape 2, livelier on overcast days and in the afternoon, from the east on clear
  days, else from south-west to north-west. The direction turns back before north, since between 350 and 10 degrees
  a straight line would pass south;
* air pressure: low on overcast days, with the tide of the atmosphere of half a day;
* sky radiation: clear sky after P. Berdahl and M. Martin, "Emissivity of clear skies", Solar Energy 32 (1984),
  p. 663; clouds after M. H. Unsworth and J. L. Monteith, "Long-wave radiation at the ground",
  Quarterly Journal of the Royal Meteorological Society 101 (1975), p. 13.

Annual values of the area mean of Germany, 1991-2020, Deutscher Wetterdienst: precipitation 791 mm, global
radiation about 1090 kWh/m2. The monthly figures below are round values of a Central European course with about
these sums; those of humidity and wind are usual for the lowlands. The series know no snow: precipitation in frost
is written as the rain that it would melt to.
"""

import dataclasses
import math

import sun
from year_courses import DAYS, HOURS, Random, annual_course, day_to_hours, month_starts, monthly_averages

LATITUDE, LONGITUDE, TIME_ZONE = 51.0, 10.0, 1.0  # the middle of Germany; central European time

RAIN_SUMS = (66, 54, 57, 45, 71, 77, 86, 78, 66, 64, 63, 64)  # [mm], 791
WET_HOURS = (0.13, 0.12, 0.11, 0.08, 0.08, 0.08, 0.08, 0.08, 0.08, 0.10, 0.12, 0.14)  # share
GLOBAL_SUMS = (22, 39, 80, 124, 154, 162, 161, 138, 96, 57, 27, 18)  # [kWh/m2], 1078
HUMIDITIES = (0.86, 0.82, 0.76, 0.70, 0.70, 0.71, 0.71, 0.73, 0.79, 0.84, 0.88, 0.88)  # 0.78
WIND_VELOCITIES = (4.2, 4.1, 4.0, 3.6, 3.4, 3.2, 3.2, 3.0, 3.2, 3.4, 3.6, 4.0)  # [m/s], 3.6
PRESSURE = 98400.0  # [Pa] at 260 m above the sea, the mean height of Germany

RAIN_CLOUD = 0.85
RAIN_HUMIDITY = 0.93
HUMIDITY_RANGE = (0.2, 0.995)
CLOUD_STEEPNESS = 2.2
STEFAN_BOLTZMANN = 5.670374e-8  # [W/m2K4]
SEED = 19910102


@dataclasses.dataclass
class Weather:
    """Hourly series: values at the full hour; means over the hour that begins with it for rain and radiation."""

    humidity: list  # 0..1
    rain: list  # [mm/h]
    cloud: list  # 0..1
    direct: list  # [W/m2] on the horizontal plane
    diffuse: list  # [W/m2]
    wind_velocity: list  # [m/s]
    wind_direction: list  # [deg] from, clockwise from north
    pressure: list  # [Pa]
    sky: list  # [W/m2]


def winter(hour):
    """1 in the middle of January, 0 in the middle of July."""
    return 0.5 * (1.0 + math.cos(2.0 * math.pi * (hour / 24 - 15) / DAYS))


def standardised(series):
    mean = sum(series) / len(series)
    deviation = math.sqrt(sum((value - mean) ** 2 for value in series) / len(series))
    return [(value - mean) / deviation for value in series]


def autoregressive(random, correlation, count):
    """Mean 0, variance 1. Two rounds over the same impulses close the course."""
    impulses = [random.normal() for _ in range(count)]
    state, states = 0.0, []
    for impulse in impulses * 2:
        state = correlation * state + impulse
        states.append(state)
    return standardised(states[count:])


def mixed(*parts):
    """Sum of (weight, series), standardised."""
    return standardised([sum(w * v for (w, _), v in zip(parts, row)) for row in zip(*(s for _, s in parts))])


def days_weather(random, deviations, clearness):
    """The hidden course at noon of each day. Deviations of the temperature from the season's, and clearness."""
    seasonal = [value * (2.0 * winter(24 * day + 12) - 1.0) for day, value in enumerate(deviations)]
    return mixed(
        (-0.6, standardised(clearness)),
        (0.35, standardised(seasonal)),
        (0.7, autoregressive(random, 0.6, DAYS)),
    )


def months():
    """First hour and hour after the end of each month."""
    starts = month_starts()
    return list(zip(starts, starts[1:]))


def rain_series(random, hidden):
    """[mm/h]"""
    showers = autoregressive(random, 0.8, HOURS)
    heaviness = autoregressive(random, 0.5, HOURS)
    readiness = [a + 0.6 * b for a, b in zip(hidden, showers)]
    series = [0.0] * HOURS
    for (first, end), total, share in zip(months(), RAIN_SUMS, WET_HOURS):
        threshold = sorted(readiness[first:end])[round((1.0 - share) * (end - first))]
        for hour in range(first, end):
            excess = readiness[hour] - threshold
            if excess > 0.0:
                series[hour] = (excess + 0.05) * math.exp(0.7 * heaviness[hour])
        scale = total / sum(series[first:end])
        series[first:end] = [scale * value for value in series[first:end]]
    return series


def cloud_value(shift, hidden, raining):
    value = 1.0 / (1.0 + math.exp(-shift - CLOUD_STEEPNESS * hidden))
    return max(value, RAIN_CLOUD) if raining else value


def global_radiation(clear, cover):
    return clear * (1.0 - 0.75 * cover**3.4)


def clear_sky_radiation():
    """[W/m2] hourly means on the horizontal plane."""

    def at(hour):
        return max(910.0 * sun.sine_of_altitude(hour, LATITUDE, LONGITUDE, TIME_ZONE) - 30.0, 0.0)

    return [sun.hourly_mean(at, hour) for hour in range(HOURS)]


def cloud_series(hidden, rain, clear):
    """The cover at the full hours whose hourly means give the monthly sums of global radiation."""
    raining = [rain[hour] > 0.0 or rain[hour - 1] > 0.0 for hour in range(HOURS)]
    series = [0.0] * HOURS
    for (first, end), total in zip(months(), GLOBAL_SUMS):
        low, high = -6.0, 6.0
        for _ in range(30):
            shift = (low + high) / 2
            part = [cloud_value(shift, hidden[hour], raining[hour]) for hour in range(first, end)]
            radiation = sum(
                global_radiation(clear[first + i], (part[i] + part[min(i + 1, end - first - 1)]) / 2)
                for i in range(end - first)
            )
            low, high = (shift, high) if radiation > 1000.0 * total else (low, shift)
        series[first:end] = part
    return series


def radiation_series(clear, cloud):
    """Direct and diffuse radiation on the horizontal plane [W/m2], hourly means."""
    direct, diffuse = [], []
    for hour in range(HOURS):
        cover = (cloud[hour] + cloud[(hour + 1) % HOURS]) / 2
        whole = global_radiation(clear[hour], cover)
        share = 0.3 + 0.7 * cover * cover
        diffuse.append(share * whole)
        direct.append((1.0 - share) * whole)
    return direct, diffuse


def saturation_pressure(celsius):
    """[Pa] over water: Magnus formula of the World Meteorological Organization."""
    return 611.2 * math.exp(17.62 * celsius / (243.12 + celsius))


def dew_point(pressure):
    """[C] of a vapour pressure [Pa]."""
    logarithm = math.log(pressure / 611.2)
    return 243.12 * logarithm / (17.62 - logarithm)


def humidity_series(temperature, hidden, rain):
    """Relative humidity 0..1."""
    daily = [sum(temperature[24 * day : 24 * day + 24]) / 24 for day in range(DAYS)]
    smooth = day_to_hours(daily)
    drying = [saturation_pressure(a) / saturation_pressure(b) for a, b in zip(smooth, temperature)]
    # the air becomes damp before rain and dries in some hours after it
    near = [0.0] * HOURS
    for hour in (hour for hour in range(HOURS) if rain[hour] > 0.0):
        for offset, share in zip(range(-2, 6), (0.33, 0.67, 1.0, 1.0, 0.8, 0.6, 0.4, 0.2)):
            at = (hour + offset) % HOURS
            near[at] = max(near[at], share)
    targets = list(HUMIDITIES)
    for _ in range(6):
        level = annual_course(targets)
        series = []
        for hour in range(HOURS):
            value = (level[hour] + 0.05 * hidden[hour]) * drying[hour]
            value += near[hour] * max(RAIN_HUMIDITY - value, 0.0)
            series.append(min(max(value, HUMIDITY_RANGE[0]), HUMIDITY_RANGE[1]))
        means = monthly_averages(series)
        targets = [target + wanted - mean for target, wanted, mean in zip(targets, HUMIDITIES, means)]
    return series


def wind_velocity_series(random, slow):
    """[m/s]"""
    strength = mixed(
        (0.45, slow), (0.75, autoregressive(random, 0.96, HOURS)), (0.4, autoregressive(random, 0.75, HOURS))
    )
    raw = []
    for hour, value in enumerate(strength):
        exceedance = 0.5 * math.erfc(value / math.sqrt(2.0))
        daily = 1.0 + (0.25 - 0.17 * winter(hour)) * math.cos(2.0 * math.pi * (hour % 24 - 14) / 24)
        raw.append(math.sqrt(-math.log(exceedance)) * daily)
    wanted = [velocity / mean for velocity, mean in zip(WIND_VELOCITIES, monthly_averages(raw))]
    return [max(value * scale, 0.1) for value, scale in zip(raw, annual_course(wanted))]


def wind_direction_series(random, slow):
    """[deg] within 1..359, reflected there."""
    westerly = mixed((0.7, slow), (0.7, day_to_hours(autoregressive(random, 0.6, DAYS))))
    veer = day_to_hours(autoregressive(random, 0.3, DAYS))
    gusts = autoregressive(random, 0.9, HOURS)
    series = []
    for hour in range(HOURS):
        angle = 90.0 + 170.0 / (1.0 + math.exp(-2.5 * (westerly[hour] + 0.75)))
        angle = abs(angle + 30.0 * veer[hour] + 20.0 * gusts[hour] - 1.0) + 1.0
        series.append(angle if angle <= 359.0 else 718.0 - angle)
    return series


def pressure_series(random, slow):
    """[Pa]"""
    course = mixed((-0.6, slow), (0.8, day_to_hours(autoregressive(random, 0.75, DAYS))))
    return [
        PRESSURE + (600.0 + 350.0 * winter(hour)) * value + 40.0 * math.cos(2.0 * math.pi * (hour % 24 - 10) / 12)
        for hour, value in enumerate(course)
    ]


def sky_series(temperature, humidity, cloud):
    """[W/m2] of the whole sky on the horizontal plane."""
    series = []
    for hour, (celsius, share, cover) in enumerate(zip(temperature, humidity, cloud)):
        dew = dew_point(share * saturation_pressure(celsius)) / 100
        clear = 0.711 + 0.56 * dew + 0.73 * dew * dew + 0.013 * math.cos(2.0 * math.pi * (hour % 24) / 24)
        emissivity = (1.0 - 0.84 * cover) * clear + 0.84 * cover
        series.append(emissivity * STEFAN_BOLTZMANN * (celsius + 273.15) ** 4)
    return series


def weather_year(temperature, deviations, clearness):
    """The weather of hourly temperatures [C], made with these daily deviations and daily clearness."""
    random = Random(SEED)
    slow = day_to_hours(days_weather(random, deviations, clearness))
    hidden = mixed((1.0, slow), (0.55, autoregressive(random, 0.88, HOURS)))
    clear = clear_sky_radiation()
    rain = rain_series(random, hidden)
    cloud = cloud_series(hidden, rain, clear)
    direct, diffuse = radiation_series(clear, cloud)
    humidity = humidity_series(temperature, hidden, rain)
    return Weather(
        humidity=humidity,
        rain=rain,
        cloud=cloud,
        direct=direct,
        diffuse=diffuse,
        wind_velocity=wind_velocity_series(random, slow),
        wind_direction=wind_direction_series(random, slow),
        pressure=pressure_series(random, slow),
        sky=sky_series(temperature, humidity, cloud),
    )
