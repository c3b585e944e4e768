"""Materials of the benchmarks of EN 15026 and HAMSTAD WP2, from their published formulas."""

import math

from material_tables import checked, function_block, number, place_points, retention_points, rising

RHO_W = 1000.0  # [kg/m3]
R_V = 8.314 / 0.018  # [J/kgK] with the constants that the benchmarks print
T_RETENTION = 293.15  # [K]
DRIEST_RH = 1e-4
KELVIN = RHO_W * R_V * T_RETENTION  # [Pa]
GRAVITY = 9.81  # [m/s2] turns suction heads into pressures
D_VAPOUR = 26.1e-6  # [m2/s] diffusivity of vapour in air

LG_P_END, LG_P_DRY = 10.0, 12.0  # from the one to the other the curves run straight to dryness
RETENTION_TOLERANCE = 1e-5  # of the saturation content
CONDUCTIVITY_TOLERANCE = 1e-3
VAPOUR_TOLERANCE = 5e-4

HAMSTAD = "C.-E. Hagentoft, HAMSTAD WP2 modeling, report R-02:8, Chalmers University of Technology, 2002"
EN15026 = "EN 15026:2007, Annex A"


# ---------------------------------------------------------------------------------------------- formulas


def van_genuchten(w_sat, modes):
    """w(p) [kg/m3] of modes (weight, a [1/Pa], n, m)."""
    return lambda p: w_sat * sum(k / (1 + (a * p) ** n) ** m for k, a, n, m in modes)


def heads(weights, a_per_metre, n):
    """Modes of a retention curve that is published over suction heads, with m = 1 - 1/n."""
    return [(k, a / (RHO_W * GRAVITY), e, 1 - 1 / e) for k, a, e in zip(weights, a_per_metre, n)]


def vapour(w_sat, mu, temperature, p=0.497):
    """delta_p(w) [s] of HAMSTAD WP2; the pores without water are limited to a millionth from below."""

    def function(w):
        free = max(1 - w / w_sat, 1e-6)
        dry = D_VAPOUR / (R_V * temperature * mu)
        return dry * free / ((1 - p) * free**2 + p)

    return function


def quintic(ln_k0, w0):
    """K(w) [s] of EN 15026 and of the finishing material of benchmark 4."""

    def function(w):
        s = w - w0
        return math.exp(
            ln_k0 + 0.0704 * s - 1.742e-4 * s**2 - 2.7953e-6 * s**3 - 1.1566e-7 * s**4 + 2.5969e-9 * s**5
        )

    return function


def polynomial(*coefficients):
    """K(w) [s], ln K as polynomial of w/1000."""
    return lambda w: math.exp(sum(c * (w / 1000) ** i for i, c in enumerate(coefficients)))


# Load bearing material of benchmark 4: (log10 of the suction [Pa], log10 of the conductivity [s]).
LOAD_BEARING_LG_K = (
    [(12.0, -27.0)]
    + [(9.16184696 - 0.12 * i, -27.32 - 0.32 * i) for i in range(14)]
    + [
        (7.48184696 - 0.12 * i, lg_k)
        for i, lg_k in enumerate(
            [-16.02314218, -15.80537097, -15.53780407, -15.34007327, -15.15797775, -14.73604922]
            + [-14.41224594, -14.10417193, -13.83399581, -13.51572314, -13.21407102, -13.00242575]
            + [-12.70786679, -12.55777242, -12.46363481, -12.39405661, -12.26136355, -12.09588942]
            + [-12.00081456, -11.95855648, -11.88446026, -11.77298037, -11.13719525, -10.14654938]
            + [-9.37365288, -8.92297423, -8.78646748, -8.7214439, -8.7214439, -8.7214439]
            + [-8.71974955] * 6
        )
    ]
    + [(1.0, -8.71974955)]
)


def load_bearing_lg_k(lg_p):
    """Linear between the points of the table above."""
    points = LOAD_BEARING_LG_K
    if lg_p >= points[0][0]:
        return points[0][1]
    for (x1, y1), (x0, y0) in zip(points, points[1:]):
        if lg_p >= x0:
            return y0 + (y1 - y0) * (lg_p - x0) / (x1 - x0)
    return points[-1][1]


# ---------------------------------------------------------------------------------------------- tables


def retention_table(name, content, w_sat):
    """Points (log10 p, Theta) of a retention curve w(p)."""
    theta = lambda x: content(10.0**x) / RHO_W
    tolerance = lambda x: RETENTION_TOLERANCE * w_sat / RHO_W
    points, worst = retention_points(name, theta, w_sat / RHO_W, LG_P_END, tolerance)
    print(f"{name}: w(p) {len(points) + 1} points, {worst:.2f} of the tolerance")
    return points + [(LG_P_DRY, 0.0)]


def sorption_table(name, content, w_sat):
    """Points (relative humidity, Theta) of a retention curve w(p), by Kelvin's law at the temperature of the
    retention; below `DRIEST_RH` they run straight to dryness."""
    theta = lambda rh: content(-KELVIN * math.log(rh)) / RHO_W
    tolerance = lambda x: RETENTION_TOLERANCE * w_sat / RHO_W
    points = [(x, theta(x)) for x in place_points(theta, DRIEST_RH, 1.0, tolerance)]
    worst = checked(name, theta, points, tolerance)
    print(f"{name}: w(RH) {len(points) + 1} points, {worst:.2f} of the tolerance")
    return [(0.0, 0.0)] + points


def conductivity_table(name, lg, theta_eff, relative, label):
    """Points (Theta, log10 K) of a conductivity, the tolerance is a function of Theta."""
    tolerance = lambda theta: math.log10(1 + relative(theta))
    points = [(x, lg(x)) for x in place_points(lg, 0.0, theta_eff, tolerance)]
    worst = checked(name, lg, points, tolerance)
    print(f"{name}: {label} {len(points)} points, {worst:.2f} of the tolerance")
    return points


def conductivity_over_suction(retention, lg_k):
    """Points (Theta, log10 K) of a curve that is linear between points over log10 p, as the retention curve is:
    exact at the points of both and in between."""
    extra = [x for x, _ in LOAD_BEARING_LG_K if retention[1][0] < x < retention[-2][0]]
    points = []
    for (x0, y0), (x1, y1) in zip(retention, retention[1:]):
        points.append((x0, y0))
        points += [(x, y0 + (y1 - y0) * (x - x0) / (x1 - x0)) for x in sorted(extra) if x0 < x < x1]
    points.append(retention[-1])
    return [(theta, lg_k(x)) for x, theta in reversed(points)]


def make_tables(m):
    name, w_sat = m["file"], m["w_sat"]
    theta_eff = w_sat / RHO_W
    retention = sorption_table if "sorption" in m else retention_table
    tables = {"retention": retention(name, m["content"], w_sat), "liquid_name": "lgKl(Theta_l)"}
    ends = (0.0, theta_eff)
    if "D_w" in m:
        tables["liquid_name"] = "lgDl(Theta_l)"
        tables["liquid"] = [(x, math.log10(m["D_w"])) for x in ends]
    elif "lg_K_of_p" in m:
        tables["liquid"] = rising(conductivity_over_suction(tables["retention"], m["lg_K_of_p"]))
    else:
        lg_k = lambda theta: math.log10(m["K"](theta * RHO_W))
        tables["liquid"] = rising(
            conductivity_table(name, lg_k, theta_eff, lambda theta: CONDUCTIVITY_TOLERANCE, "K(w)")
        )
    if "delta_p" in m:
        tables["vapour"] = [(x, math.log10(m["delta_p"])) for x in ends]
    else:
        delta_p = vapour(w_sat, m["mu"], m["T_vapour"], m["p_vapour"])
        nearly_full = lambda theta: 10 if theta > 0.99 * theta_eff else 1
        tables["vapour"] = conductivity_table(
            name,
            lambda theta: math.log10(delta_p(theta * RHO_W)),
            theta_eff * (1 - 1e-6),
            lambda theta: VAPOUR_TOLERANCE * nearly_full(theta),
            "Kv(w)",
        )
    dry, slope = m["lambda"]
    tables["lambda"] = [(0.0, dry), (theta_eff, dry + slope * w_sat)]
    return tables


# ---------------------------------------------------------------------------------------------- files


def storage_text(m, points):
    if "sorption" in m:
        return function_block("Theta_l(RH)", points)
    inverse = [(theta, x) for x, theta in reversed(points)]
    return function_block("Theta_l(pC)_de", points) + "\n" + function_block("pC(Theta_l)_de", inverse)


def material_text(m, tables):
    notes = "".join(f"; {line}\n" for line in m["notes"])
    theta_eff = number(m["w_sat"] / RHO_W)
    return f"""V6MARLZ! 006.000

{notes}; The tables are made by tools/make_materials.py, which tells their errors.
; THETA_POR, THETA_EFF: the saturation moisture content of the formulas. Closed for air flow.

[IDENTIFICATION]
NAME = en:{m["english"]}|de:{m["german"]}
LABORATORY = en:{m["source"]}
CATEGORY = {m["category"]}
COLOUR = {m["colour"]}
HATCHING = {m["hatching"]}
FLAGS = AIR_TIGHT
COMMENTS = en:{m["comment"]}

[STORAGE_BASE_PARAMETERS]
RHO = {number(m["rho"])} kg/m3
CE = {number(m["c"])} J/kgK
THETA_POR = {theta_eff} m3/m3
THETA_EFF = {theta_eff} m3/m3

[TRANSPORT_BASE_PARAMETERS]
LAMBDA = {number(m["lambda"][0])} W/mK
{f'MEW = {number(m["mu"])} -' if "mu" in m else ""}
[MOISTURE_STORAGE]
{storage_text(m, tables["retention"])}
[MOISTURE_TRANSPORT]
{function_block(tables["liquid_name"], tables["liquid"])}
{function_block("lgKv(Theta_l)", tables["vapour"])}
[HEAT_TRANSPORT]
{function_block("lambda(Theta_l)", tables["lambda"])}"""


VAPOUR_LAW = "delta_p = M/(R T) 26.1e-6/mu s/((1-p) s^2 + p), s = 1 - w/w_sat"
VAN_GENUCHTEN_LAW = "w = w_sat sum k/(1+(a p)^n)^m"
LN_K_QUINTIC = "+ 0.0704 s - 1.742e-4 s^2 - 2.7953e-6 s^3 - 1.1566e-7 s^4 + 2.5969e-9 s^5)"

MATERIALS = [
    {
        "file": "EN15026_3001",
        "english": "EN 15026 benchmark material",
        "german": "Material des Benchmarks EN 15026",
        "source": EN15026,
        "comment": "Test material of EN 15026:2007, Annex A; not a product",
        "notes": [
            "Material of the benchmark of EN 15026:2007, Annex A; the load bearing material of HAMSTAD WP2 benchmark 1.",
            "w = 146/(1 + (8e-8 p)^1.6)^0.375 kg/m3, p: suction in Pa, which the standard takes from the humidity at",
            "20 C whatever the temperature: a table over the relative humidity.",
            f"K = exp(-39.2619 {LN_K_QUINTIC} s,",
            "s = w - 73.",
            f"{VAPOUR_LAW}, mu = 200, p = 0.497, taken at T = 303.15 K: the moisture",
            "moves next to the surface of 30 C.",
            "lambda = 1.5 + 0.0158 w. RHO times CE = 1.824e6 J/m3K; the split into the two factors is free.",
        ],
        "category": "CONCRETE",
        "colour": "#b4b4a0",
        "hatching": "ConcreteNotReinforced",
        "rho": 2280,
        "c": 800,
        "lambda": (1.5, 15.8e-3),
        "w_sat": 146,
        "sorption": True,
        "content": van_genuchten(146, [(1, 8e-8, 1.6, 0.375)]),
        "K": quintic(-39.2619, 73),
        "mu": 200,
        "p_vapour": 0.497,
        "T_vapour": 303.15,
    },
    {
        "file": "HamstadDrying_3002",
        "english": "HAMSTAD benchmark 2 material",
        "german": "Material des HAMSTAD-Benchmarks 2",
        "source": HAMSTAD,
        "comment": "Test material of HAMSTAD WP2 benchmark 2, isothermal drying; not a product",
        "notes": [
            "Material of HAMSTAD WP2 benchmark 2, isothermal drying with an exact solution.",
            f"{HAMSTAD}.",
            "w = 116/(1 - ln(phi)/0.118)^0.869 kg/m3, over suction by Kelvin's law at 20 C.",
            "D_w = 6e-10 m2/s and delta_p = 1e-15 s, both constant. lambda = 0.15 W/mK.",
        ],
        "category": "MISC",
        "colour": "#d2d2be",
        "hatching": "None",
        "rho": 525,
        "c": 800,
        "lambda": (0.15, 0.0),
        "w_sat": 116,
        "content": lambda p: 116 * (1 + p / (RHO_W * R_V * T_RETENTION) / 0.118) ** -0.869,
        "D_w": 6e-10,
        "delta_p": 1e-15,
    },
    {
        "file": "HamstadLoadBearing_3003",
        "english": "HAMSTAD benchmark 4 load bearing material",
        "german": "Tragendes Material des HAMSTAD-Benchmarks 4",
        "source": HAMSTAD,
        "comment": "Test material of HAMSTAD WP2 benchmark 4, response analysis; not a product",
        "notes": [
            "Load bearing material of HAMSTAD WP2 benchmark 4, response analysis.",
            f"{HAMSTAD}.",
            f"{VAN_GENUCHTEN_LAW}: w_sat = 157 kg/m3, k = 0.3, 0.7, a = 1.25e-5, 1.8e-5 1/Pa,",
            "n = 1.65, 6, m = 0.39394, 0.83333, p: suction in Pa.",
            "lg K over lg p: the table of the benchmark, linear in between; at suctions above 4e7 Pa, where the table",
            "falls below 1e-27 s and rises again, the least deviating curve that rises with w.",
            f"{VAPOUR_LAW}, mu = 30, p = 0.497, taken at T = 293.15 K.",
            "lambda = 0.5 + 0.0045 w.",
        ],
        "category": "BRICK",
        "colour": "#c8783c",
        "hatching": "Masonry",
        "rho": 2005,
        "c": 840,
        "lambda": (0.5, 4.5e-3),
        "w_sat": 157,
        "content": van_genuchten(157, [(0.3, 1.25e-5, 1.65, 0.39394), (0.7, 1.8e-5, 6, 0.83333)]),
        "lg_K_of_p": load_bearing_lg_k,
        "mu": 30,
        "p_vapour": 0.497,
        "T_vapour": 293.15,
    },
    {
        "file": "HamstadFinishing_3004",
        "english": "HAMSTAD benchmark 4 finishing material",
        "german": "Deckschicht des HAMSTAD-Benchmarks 4",
        "source": HAMSTAD,
        "comment": "Test material of HAMSTAD WP2 benchmark 4, response analysis; not a product",
        "notes": [
            "Finishing material of HAMSTAD WP2 benchmark 4, response analysis.",
            f"{HAMSTAD}.",
            f"{VAN_GENUCHTEN_LAW}: w_sat = 209 kg/m3, a = 2e-6 1/Pa, n = 1.27, m = 0.2126, p: suction in Pa.",
            f"K = exp(-33 {LN_K_QUINTIC} s,",
            "s = w - 120.",
            f"{VAPOUR_LAW}, mu = 3, p = 0.497, taken at T = 293.15 K.",
            "lambda = 0.2 + 0.0045 w.",
        ],
        "category": "PLASTER",
        "colour": "#e6dcbe",
        "hatching": "MortarPlaster",
        "rho": 790,
        "c": 870,
        "lambda": (0.2, 4.5e-3),
        "w_sat": 209,
        "content": van_genuchten(209, [(1, 2e-6, 1.27, 0.2126)]),
        "K": quintic(-33, 120),
        "mu": 3,
        "p_vapour": 0.497,
        "T_vapour": 293.15,
    },
    {
        "file": "HamstadBrick_3005",
        "english": "HAMSTAD benchmark 5 brick",
        "german": "Ziegel des HAMSTAD-Benchmarks 5",
        "source": HAMSTAD,
        "comment": "Test material of HAMSTAD WP2 benchmark 5, capillary active inside insulation; not a product",
        "notes": [
            "Brick of HAMSTAD WP2 benchmark 5, capillary active inside insulation.",
            f"{HAMSTAD}.",
            f"{VAN_GENUCHTEN_LAW}: w_sat = 373.5 kg/m3, k = 0.46, 0.54, a = 0.47, 0.2 1/m",
            "over 9810 Pa/m, n = 1.5, 3.8, m = 1 - 1/n, p: suction in Pa.",
            "K = exp(-36.484 + 461.325 u - 5240 u^2 + 2.907e4 u^3 - 7.41e4 u^4 + 6.997e4 u^5) s, u = w/1000; from",
            "w = 270 to 352, where the formula falls for a while, the least deviating rising curve is taken, within 9 %.",
            f"{VAPOUR_LAW}, mu = 7.5, p = 0.2, taken at T = 278.15 K, the mean of",
            "the layer. lambda = 0.682.",
        ],
        "category": "BRICK",
        "colour": "#c85a32",
        "hatching": "Masonry",
        "rho": 1600,
        "c": 1000,
        "lambda": (0.682, 0.0),
        "w_sat": 373.5,
        "content": van_genuchten(373.5, heads((0.46, 0.54), (0.47, 0.2), (1.5, 3.8))),
        "K": polynomial(-36.484, 461.325, -5240, 2.907e4, -7.41e4, 6.997e4),
        "mu": 7.5,
        "p_vapour": 0.2,
        "T_vapour": 278.15,
    },
    {
        "file": "HamstadMortar_3006",
        "english": "HAMSTAD benchmark 5 adhesive mortar",
        "german": "Klebemörtel des HAMSTAD-Benchmarks 5",
        "source": HAMSTAD,
        "comment": "Test material of HAMSTAD WP2 benchmark 5, capillary active inside insulation; not a product",
        "notes": [
            "Adhesive mortar of HAMSTAD WP2 benchmark 5, capillary active inside insulation.",
            f"{HAMSTAD}.",
            f"{VAN_GENUCHTEN_LAW}: w_sat = 700 kg/m3, k = 0.2, 0.8, a = 0.5, 0.004 1/m over 9810 Pa/m,",
            "n = 1.5, 3.8, m = 1 - 1/n, p: suction in Pa.",
            "K = exp(-40.425 + 83.319 u - 175.961 u^2 + 123.863 u^3) s, u = w/1000.",
            f"{VAPOUR_LAW}, mu = 50, p = 0.2, taken at T = 283.15 K, the mean of",
            "the layer. lambda = 0.6 + 0.56e-3 w.",
        ],
        "category": "PLASTER",
        "colour": "#c8c8b4",
        "hatching": "MortarPlaster",
        "rho": 230,
        "c": 920,
        "lambda": (0.6, 0.56e-3),
        "w_sat": 700,
        "content": van_genuchten(700, heads((0.2, 0.8), (0.5, 0.004), (1.5, 3.8))),
        "K": polynomial(-40.425, 83.319, -175.961, 123.863),
        "mu": 50,
        "p_vapour": 0.2,
        "T_vapour": 283.15,
    },
    {
        "file": "HamstadInsulation_3007",
        "english": "HAMSTAD benchmark 5 capillary active insulation",
        "german": "Kapillaraktive Dämmung des HAMSTAD-Benchmarks 5",
        "source": HAMSTAD,
        "comment": "Test material of HAMSTAD WP2 benchmark 5, capillary active inside insulation; not a product",
        "notes": [
            "Insulation of HAMSTAD WP2 benchmark 5, capillary active inside insulation.",
            f"{HAMSTAD}.",
            f"{VAN_GENUCHTEN_LAW}: w_sat = 871 kg/m3, k = 0.41, 0.59, a = 0.006, 0.012 1/m",
            "over 9810 Pa/m, n = 2.5, 2.4, m = 1 - 1/n, p: suction in Pa.",
            "K = exp(-46.245 + 294.506 u - 1439 u^2 + 3249 u^3 - 3370 u^4 + 1305 u^5) s, u = w/1000; from",
            "w = 202 to 397 and from 625 to 839, where the formula falls for a while, the least deviating rising curve is",
            "taken, within 14 %.",
            f"{VAPOUR_LAW}, mu = 5.6, p = 0.2, taken at T = 288.15 K, the mean of",
            "the layer. lambda = 0.06 + 0.56e-3 w.",
        ],
        "category": "INSULATION",
        "colour": "#f0f0d2",
        "hatching": "Insulation",
        "rho": 212,
        "c": 1000,
        "lambda": (0.06, 0.56e-3),
        "w_sat": 871,
        "content": van_genuchten(871, heads((0.41, 0.59), (0.006, 0.012), (2.5, 2.4))),
        "K": polynomial(-46.245, 294.506, -1439, 3249, -3370, 1305),
        "mu": 5.6,
        "p_vapour": 0.2,
        "T_vapour": 288.15,
    },
]
