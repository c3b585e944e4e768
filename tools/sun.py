"""Position of the sun and radiation above the atmosphere, hourly means on the horizontal plane.

Declination, equation of time and distance by the Fourier series of J. W. Spencer, "Fourier series
representation of the position of the sun", Search 2 (1971), p. 172; the declination is within 0.05 degrees.
Hours are those of a clock with a fixed offset to universal time, counted from the start of a year of 365 days.
"""

import math

SOLAR_CONSTANT = 1361.0  # [W/m2] total solar irradiance, Kopp and Lean, 2011
STEPS_PER_HOUR = 12


def day_angle(hour):
    return 2.0 * math.pi * (hour / 24 % 365) / 365


def declination(hour):
    """[Rad]"""
    a = day_angle(hour)
    return (
        0.006918
        - 0.399912 * math.cos(a)
        + 0.070257 * math.sin(a)
        - 0.006758 * math.cos(2 * a)
        + 0.000907 * math.sin(2 * a)
        - 0.002697 * math.cos(3 * a)
        + 0.00148 * math.sin(3 * a)
    )


def equation_of_time(hour):
    """[h] by which a sundial is ahead of a clock of the same meridian."""
    a = day_angle(hour)
    radians = (
        0.000075
        + 0.001868 * math.cos(a)
        - 0.032077 * math.sin(a)
        - 0.014615 * math.cos(2 * a)
        - 0.04089 * math.sin(2 * a)
    )
    return radians * 12 / math.pi


def extraterrestrial_normal(hour):
    """[W/m2] normal to the rays."""
    a = day_angle(hour)
    factor = (
        1.00011
        + 0.034221 * math.cos(a)
        + 0.00128 * math.sin(a)
        + 0.000719 * math.cos(2 * a)
        + 0.000077 * math.sin(2 * a)
    )
    return SOLAR_CONSTANT * factor


def sine_of_altitude(hour, latitude, longitude, time_zone):
    """Latitude (north positive) and longitude (east positive) in degrees, time zone in hours."""
    phi, delta = math.radians(latitude), declination(hour)
    solar_hour = hour - time_zone + longitude / 15 + equation_of_time(hour)
    angle = math.pi * (solar_hour - 12) / 12
    return math.sin(phi) * math.sin(delta) + math.cos(phi) * math.cos(delta) * math.cos(angle)


def hourly_mean(function, hour):
    """Mean of a function of the hour over the hour that begins with `hour`."""
    return sum(function(hour + (i + 0.5) / STEPS_PER_HOUR) for i in range(STEPS_PER_HOUR)) / STEPS_PER_HOUR


def mean_sine_above_horizon(hour, latitude, longitude, time_zone):
    """Mean over the hour that begins with `hour`; 0 while the sun is below the horizon."""
    return hourly_mean(lambda t: max(sine_of_altitude(t, latitude, longitude, time_zone), 0.0), hour)


def extraterrestrial_horizontal(hour, latitude, longitude, time_zone):
    """[W/m2] mean over the hour that begins with `hour`."""
    return extraterrestrial_normal(hour + 0.5) * mean_sine_above_horizon(hour, latitude, longitude, time_zone)
