"""Common building materials: base parameters of standards, moisture functions from typical values.

Three closed forms turn few values into curves:

* Moisture storage after H. M. Kuenzel, "Verfahren zur ein- und zweidimensionalen Berechnung des gekoppelten
  Waerme- und Feuchtetransports in Bauteilen mit einfachen Kennwerten", thesis, University of Stuttgart, 1994:
  w = w_f (b - 1) phi / (b - phi), b from the moisture content at 80 % relative humidity.
* Liquid diffusivity of the same source: D = 3.8 (A / w_f)^2 1000^(w / w_f - 1), A: water absorption coefficient.
* Sorption of wood after A. J. Hailwood and S. Horrobin with the coefficients of the Wood Handbook, USDA Forest
  Products Laboratory, FPL-GTR-190, 2010, equation 4-5; the water in the lumens after M. T. van Genuchten, 1980.
"""

import math

from material_tables import checked, function_block, number, place_points, retention_points

RHO_W = 1000.0  # [kg/m3]
KELVIN = RHO_W * 461.89 * 293.15  # [Pa] suction = -KELVIN ln(phi) at 20 C
DRYEST_PHI = 0.05  # from here the curves over suction fall smoothly, without a kink
LG_P_END, LG_P_DRY = 11.0, 12.0  # from the one to the other straight

STORAGE_TOLERANCE = 1e-5  # of the saturation content, plus
STORAGE_RELATIVE_TOLERANCE = 1e-3
CONDUCTIVITY_TOLERANCE = 1e-3

KUENZEL = "H. M. Künzel, thesis, University of Stuttgart, 1994"
ISO10456 = "EN ISO 10456:2007"


def phi_at(lg_p):
    return math.exp(-(10.0**lg_p) / KELVIN)


def kuenzel_content(theta_f, theta_80):
    """Theta(phi)."""
    b = 0.8 * (theta_f - theta_80) / (0.8 * theta_f - theta_80)
    return lambda phi: theta_f * (b - 1) * phi / (b - phi)


def kuenzel_diffusivity(absorption, theta_f):
    """log10 of D [m2/s] over Theta, A in kg/(m2 s^0.5)."""
    w_f = theta_f * RHO_W
    return lambda theta: math.log10(3.8 * (absorption / w_f) ** 2) + 3 * (theta / theta_f - 1)


def wood_sorption(rho, celsius=20.0):
    """Theta(phi) of the water in the cell walls."""
    weight = 349 + 1.29 * celsius + 0.0135 * celsius**2
    k = 0.805 + 0.000736 * celsius - 0.00000273 * celsius**2
    k1 = 6.27 - 0.00938 * celsius - 0.000303 * celsius**2
    k2 = 1.91 + 0.0407 * celsius - 0.000293 * celsius**2

    def content(phi):
        kh = k * phi
        hydrated = (k1 * kh + 2 * k1 * k2 * kh**2) / (1 + k1 * kh + k1 * k2 * kh**2)
        percent = 1800 / weight * (kh / (1 - kh) + hydrated)
        return percent / 100 * rho / RHO_W

    return content


def wood_content(rho, theta_eff, lumen_radius):
    """Theta(phi) of cell walls and lumens; the lumens empty about the capillary pressure of their radius."""
    walls = wood_sorption(rho)
    lumens = theta_eff - walls(1.0)
    suction = 0.152 / lumen_radius  # twice the surface tension [N/m] over the radius
    n = 2.0

    def content(phi):
        p = -KELVIN * math.log(phi)
        return walls(phi) + lumens * (1 + (p / suction) ** n) ** (1 / n - 1)

    return content


# ---------------------------------------------------------------------------------------------- tables


def over_humidity(m):
    """FUNCTION block of Theta over the relative humidity."""
    tolerance = lambda phi: STORAGE_TOLERANCE * m["theta_eff"] + STORAGE_RELATIVE_TOLERANCE * m["content"](phi)
    points = [(x, m["content"](x)) for x in place_points(m["content"], 0.0, 1.0, tolerance)]
    checked(m["file"], m["content"], points, tolerance)
    points[-1] = (1.0, m["theta_eff"])
    return [("Theta_l(RH)", points)]


def with_dry_end(theta):
    """Theta(log10 p) that below DRYEST_PHI falls as a power of the distance from dryness, without a kink."""
    driest = math.log10(-KELVIN * math.log(DRYEST_PHI))
    value, reach = theta(driest), LG_P_DRY - driest
    exponent = reach * (theta(driest - 1e-4) - value) / 1e-4 / value
    return lambda x: theta(x) if x <= driest else value * ((LG_P_DRY - x) / reach) ** exponent


def over_suction(m):
    """FUNCTION blocks of Theta over log10 of the suction and of the inverse, on the same points."""
    content = with_dry_end(lambda x: m["content"](phi_at(x)))
    tolerance = lambda x: STORAGE_TOLERANCE * m["theta_eff"] + STORAGE_RELATIVE_TOLERANCE * content(x)
    points, _ = retention_points(m["file"], content, m["theta_eff"], LG_P_END, tolerance)
    points.append((LG_P_DRY, 0.0))
    return [("Theta_l(pC)_de", points), ("pC(Theta_l)_de", [(theta, x) for x, theta in reversed(points)])]


def diffusivity(m):
    """FUNCTION block of log10 of D. It is linear; the points keep the integral of D exact to 4e-4."""
    lg_d = kuenzel_diffusivity(m["absorption"], m["theta_eff"])
    return [("lgDl(Theta_l)", [(m["theta_eff"] * i / 100, lg_d(m["theta_eff"] * i / 100)) for i in range(101)])]


def conductivity(m):
    """FUNCTION block of log10 of K = rho_w D dTheta/dp, with the slope of the storage curve of Kuenzel."""
    lg_d = kuenzel_diffusivity(m["absorption"], m["theta_eff"])
    b = 0.8 * (m["theta_eff"] - m["theta_80"]) / (0.8 * m["theta_eff"] - m["theta_80"])

    def lg_k(theta):
        phi = b * theta / (m["theta_eff"] * (b - 1) + theta)
        slope = m["theta_eff"] * (b - 1) * b / (b - phi) ** 2 * phi / KELVIN
        return math.log10(RHO_W * slope) + lg_d(theta)

    tolerance = lambda theta: math.log10(1 + CONDUCTIVITY_TOLERANCE)
    begin = 1e-5 * m["theta_eff"]
    points = [(x, lg_k(x)) for x in place_points(lg_k, begin, m["theta_eff"], tolerance)]
    checked(m["file"], lg_k, points, tolerance)
    return [("lgKl(Theta_l)", points)]


def cup_values(m):
    """FUNCTION block of the resistance factor: dry cup (mean humidity 25 %) to wet cup (71.5 %)."""
    if "wet_mu" not in m:
        return []
    return [("mew(RH)", [(0.0, m["mu"]), (0.25, m["mu"]), (0.715, m["wet_mu"]), (1.0, m["wet_mu"])])]


def heat_conductivity(m):
    """FUNCTION block of lambda: the design value up to the content that it includes, then rising."""
    theta_50, coefficient = m["lambda_moisture"]
    end = m["theta_eff"]
    start = [(0.0, m["lambda"])] + ([(theta_50, m["lambda"])] if theta_50 > 0 else [])
    return [("lambda(Theta_l)", start + [(end, m["lambda"] * (1 + coefficient * (end - theta_50)))])]


# ---------------------------------------------------------------------------------------------- materials

MATERIALS = [
    {
        "file": "Brick_2001",
        "english": "Brick masonry 1800 kg/m3",
        "german": "Ziegelmauerwerk 1800 kg/m3",
        "source": f"DIN 4108-4, EN 1745, {ISO10456}; {KUENZEL}",
        "notes": [
            "Masonry of solid or vertically perforated fired clay bricks with normal mortar.",
            "RHO, LAMBDA, MEW (5/10): DIN 4108-4, table 1, masonry of clay bricks. CE: EN 1745, fired clay.",
            "THETA_POR: 1 - RHO / 2650 kg/m3, the density of quartz and clay minerals.",
            "THETA_EFF: free saturation, typical value: 80 % of the pores, the rest holds trapped air.",
            "Theta(80 %) = 0.012: EN ISO 10456, table 4, fired clay. AW: typical value for clay brick (0.1 to 0.4).",
            f"Storage and liquid transport: closed forms of {KUENZEL}.",
            "lambda(Theta_l): constant up to 0.007, the content at 50 %, then with the conversion coefficient 10 of",
            "fired clay, EN ISO 10456, table 4, linearised.",
            "Closed for air flow: the air permeability is neglected.",
        ],
        "category": "BRICK",
        "colour": "#c86432",
        "hatching": "Masonry",
        "flags": "AIR_TIGHT",
        "rho": 1800,
        "c": 1000,
        "theta_por": 0.32,
        "theta_eff": 0.256,
        "theta_80": 0.012,
        "lambda": 0.81,
        "lambda_moisture": (0.007, 10),
        "mu": 10,
        "wet_mu": 5,
        "absorption": 0.2,
        "storage": over_suction,
        "liquid": conductivity,
    },
    {
        "file": "Concrete_2002",
        "english": "Concrete 2200 kg/m3",
        "german": "Beton 2200 kg/m3",
        "source": f"{ISO10456}; {KUENZEL}",
        "notes": [
            "Concrete of medium density.",
            "RHO, CE, LAMBDA, MEW (120/70): EN ISO 10456:2007, table 3.",
            "THETA_POR: 1 - RHO / 2650 kg/m3, the density of the aggregate.",
            "THETA_EFF: free saturation, typical value: 80 % of the pores, the rest holds trapped air.",
            "Theta(80 %) = 0.04: EN ISO 10456, table 4, dense aggregate. AW: typical value (0.01 to 0.03).",
            f"Storage and liquid transport: closed forms of {KUENZEL}.",
            "lambda(Theta_l): constant up to 0.025, the content at 50 %, then with the conversion coefficient 4 of",
            "dense aggregate concrete, EN ISO 10456, table 4, linearised.",
            "Closed for air flow: the air permeability is neglected.",
        ],
        "category": "CONCRETE",
        "colour": "#969696",
        "hatching": "ConcreteNotReinforced",
        "flags": "AIR_TIGHT",
        "rho": 2200,
        "c": 1000,
        "theta_por": 0.17,
        "theta_eff": 0.136,
        "theta_80": 0.04,
        "lambda": 1.65,
        "lambda_moisture": (0.025, 4),
        "mu": 120,
        "wet_mu": 70,
        "absorption": 0.017,
        "storage": over_humidity,
        "liquid": diffusivity,
    },
    {
        "file": "LimePlaster_2003",
        "english": "Lime plaster",
        "german": "Kalkputz",
        "source": f"{ISO10456}; {KUENZEL}",
        "notes": [
            "Plaster of lime and sand.",
            "RHO, CE, LAMBDA, MEW (10/6): EN ISO 10456:2007, table 3.",
            "THETA_POR: 1 - RHO / 2700 kg/m3, the density of quartz and lime.",
            "THETA_EFF: free saturation, typical value: 80 % of the pores, the rest holds trapped air.",
            "Theta(80 %) = 0.06: EN ISO 10456, table 4, rendering mortar. AW: typical value (0.03 to 0.15).",
            f"Storage and liquid transport: closed forms of {KUENZEL}.",
            "lambda(Theta_l): constant up to 0.04, the content at 50 %, then with the conversion coefficient 4 of",
            "mortar, EN ISO 10456, table 4, linearised.",
            "Closed for air flow: the air permeability is neglected.",
        ],
        "category": "PLASTER",
        "colour": "#e6e1c8",
        "hatching": "MortarPlaster",
        "flags": "AIR_TIGHT",
        "rho": 1600,
        "c": 1000,
        "theta_por": 0.41,
        "theta_eff": 0.328,
        "theta_80": 0.06,
        "lambda": 0.8,
        "lambda_moisture": (0.04, 4),
        "mu": 10,
        "wet_mu": 6,
        "absorption": 0.05,
        "storage": over_suction,
        "liquid": diffusivity,
    },
    {
        "file": "MineralWool_2004",
        "english": "Mineral wool",
        "german": "Mineralwolle",
        "source": f"{ISO10456}, DIN 4108-4, EN 13162",
        "notes": [
            "Mineral wool board. WATER_TIGHT: it has no capillary transport.",
            "CE, MEW: EN ISO 10456:2007, table 4, where RHO is 10 to 200 kg/m3. LAMBDA: DIN 4108-4, conductivity group 040.",
            "THETA_POR: 1 - RHO / 2500 kg/m3, the density of glass. THETA_EFF: typical value, the rest holds trapped air.",
            "KG: density of air, 1.2 kg/m3, over the flow resistivity of 5000 Pa s/m2 (EN 13162, level AFr5).",
            "Theta_l(RH): not hygroscopic (EN ISO 10456, table 4: 0); the typical trace of 0.2 kg/m3 at 80 %, in the",
            f"closed form of {KUENZEL}. Condensate stays where it falls.",
            "lambda(Theta_l): conversion coefficient 4, EN ISO 10456, table 4, linearised.",
        ],
        "category": "INSULATION",
        "colour": "#f0e65a",
        "hatching": "Insulation",
        "flags": "WATER_TIGHT",
        "rho": 50,
        "c": 1030,
        "theta_por": 0.98,
        "theta_eff": 0.95,
        "theta_80": 0.0002,
        "lambda": 0.04,
        "lambda_moisture": (0.0, 4),
        "mu": 1,
        "extra": "KG = 0.00024 s\n",
        "storage": over_humidity,
    },
    {
        "file": "ExpandedPolystyrene_2005",
        "english": "Expanded polystyrene (EPS)",
        "german": "Expandiertes Polystyrol (EPS)",
        "source": f"{ISO10456}, DIN 4108-4, EN 13163",
        "notes": [
            "Expanded polystyrene board. WATER_TIGHT: it has no capillary transport.",
            "CE, MEW: EN ISO 10456:2007, table 4, where RHO is 10 to 50 kg/m3. LAMBDA: DIN 4108-4, conductivity group 040.",
            "THETA_POR: 1 - RHO / 1050 kg/m3, the density of polystyrene.",
            "THETA_EFF: water taken up in long-term immersion, 5 % by volume (EN 13163, level WL(T)5): the cells are closed.",
            "Theta_l(RH): not hygroscopic (EN ISO 10456, table 4: 0); the typical trace of 0.2 kg/m3 at 80 %, in the",
            f"closed form of {KUENZEL}.",
            "lambda(Theta_l): conversion coefficient 4, EN ISO 10456, table 4, linearised.",
            "Closed for air flow: the air permeability is neglected.",
        ],
        "category": "INSULATION",
        "colour": "#f5f5fa",
        "hatching": "Insulation",
        "flags": "AIR_TIGHT WATER_TIGHT",
        "rho": 20,
        "c": 1450,
        "theta_por": 0.98,
        "theta_eff": 0.05,
        "theta_80": 0.0002,
        "lambda": 0.04,
        "lambda_moisture": (0.0, 4),
        "mu": 60,
        "storage": over_humidity,
    },
    {
        "file": "Spruce_2006",
        "english": "Spruce",
        "german": "Fichte",
        "source": f"{ISO10456}; USDA Wood Handbook, FPL-GTR-190, 2010; {KUENZEL}",
        "notes": [
            "Spruce, heat and moisture flow across the grain.",
            "RHO, CE, LAMBDA, MEW (50/20): EN ISO 10456:2007, table 3, timber of 450 kg/m3.",
            "THETA_POR: 1 - RHO / 1500 kg/m3, the density of the cell walls. THETA_EFF: typical value: 80 % of the pores.",
            "Storage: sorption after Hailwood and Horrobin at 20 C, Wood Handbook, FPL-GTR-190, USDA Forest Products",
            "Laboratory, 2010, equation 4-5; above that lumens of 10 micrometre radius (typical value) in the closed form",
            "of van Genuchten, Soil Sci. Soc. Am. J. 44, 1980, with n = 2.",
            "AW: typical value across the grain (0.003 to 0.005); liquid transport: closed form of",
            f"{KUENZEL}.",
            "lambda(Theta_l): constant up to 0.042, the content at 50 %, then 1.3 % for each mass-% of water, typical value.",
            "Closed for air flow: the air permeability is neglected.",
        ],
        "category": "TIMBER",
        "colour": "#dcb978",
        "hatching": "WoodTransverseToFibre",
        "flags": "AIR_TIGHT WOOD",
        "rho": 450,
        "c": 1600,
        "theta_por": 0.7,
        "theta_eff": 0.56,
        "content": wood_content(450, 0.56, 1e-5),
        "lambda": 0.12,
        "lambda_moisture": (0.042, 1.3 * RHO_W / 450),
        "mu": 50,
        "wet_mu": 20,
        "absorption": 0.004,
        "storage": over_suction,
        "liquid": diffusivity,
    },
    {
        "file": "GypsumBoard_2007",
        "english": "Gypsum board",
        "german": "Gipskartonplatte",
        "source": f"{ISO10456}; {KUENZEL}",
        "notes": [
            "Gypsum plasterboard with its paper lining.",
            "RHO, CE, LAMBDA, MEW (10/4): EN ISO 10456:2007, table 3.",
            "THETA_POR: 1 - RHO / 2320 kg/m3, the density of gypsum.",
            "THETA_EFF: free saturation, typical value: 80 % of the pores, the rest holds trapped air.",
            "Theta(80 %) = 0.009: typical value, 1 % by mass. AW = 0.1: typical value; the core takes up more, the paper less.",
            f"Storage and liquid transport: closed forms of {KUENZEL}.",
            "lambda(Theta_l): constant up to 0.004, the content at 50 %, then with the conversion coefficient 4 of",
            "mortar, EN ISO 10456, table 4, linearised.",
            "Closed for air flow: the air permeability is neglected.",
        ],
        "category": "BUILDING_BOARDS",
        "colour": "#ebebeb",
        "hatching": "MortarPlaster",
        "flags": "AIR_TIGHT",
        "rho": 900,
        "c": 1000,
        "theta_por": 0.61,
        "theta_eff": 0.488,
        "theta_80": 0.009,
        "lambda": 0.25,
        "lambda_moisture": (0.004, 4),
        "mu": 10,
        "wet_mu": 4,
        "absorption": 0.1,
        "storage": over_humidity,
        "liquid": diffusivity,
    },
    {
        "file": "CementScreed_2010",
        "english": "Cement screed",
        "german": "Zementestrich",
        "source": f"DIN 4108-4, {ISO10456}; {KUENZEL}",
        "notes": [
            "Floating screed of cement and sand.",
            "RHO, LAMBDA, MEW (15/35): DIN 4108-4, table 1, cement screed. CE: EN ISO 10456:2007, table 3, mortar.",
            "THETA_POR: 1 - RHO / 2650 kg/m3, the density of quartz.",
            "THETA_EFF: free saturation, typical value: 80 % of the pores, the rest holds trapped air.",
            "Theta(80 %) = 0.06: EN ISO 10456, table 4, mortar. AW: typical value (0.02 to 0.1).",
            f"Storage and liquid transport: closed forms of {KUENZEL}.",
            "lambda(Theta_l): constant up to 0.04, the content at 50 %, then with the conversion coefficient 4 of",
            "mortar, EN ISO 10456, table 4, linearised.",
            "Closed for air flow: the air permeability is neglected.",
        ],
        "category": "PLASTER",
        "colour": "#b4b4aa",
        "hatching": "MortarPlaster",
        "flags": "AIR_TIGHT",
        "rho": 2000,
        "c": 1000,
        "theta_por": 0.25,
        "theta_eff": 0.2,
        "theta_80": 0.06,
        "lambda": 1.4,
        "lambda_moisture": (0.04, 4),
        "mu": 35,
        "wet_mu": 15,
        "absorption": 0.05,
        "storage": over_humidity,
        "liquid": diffusivity,
    },
    {
        "file": "PvcFloorCovering_2011",
        "english": "PVC floor covering",
        "german": "PVC-Bodenbelag",
        "source": ISO10456,
        "notes": [
            "Homogeneous floor covering of plasticised polyvinyl chloride. WATER_TIGHT: it has no capillary transport.",
            "RHO, CE, LAMBDA, MEW: EN ISO 10456:2007, table 3, floor covering of plastic.",
            "THETA_POR, THETA_EFF: the material has no pores; typical values of what dissolves in it, so that the models",
            "of vapour and pollutants, which divide by the pore space, have one.",
            f"Theta_l(RH): a trace of 2 kg/m3 at 80 %, typical value, in the closed form of {KUENZEL}.",
            "lambda(Theta_l): no influence of the moisture.",
            "Closed for air flow.",
        ],
        "category": "MISC",
        "colour": "#5a7896",
        "hatching": "None",
        "flags": "AIR_TIGHT WATER_TIGHT",
        "rho": 1700,
        "c": 1400,
        "theta_por": 0.02,
        "theta_eff": 0.005,
        "theta_80": 0.002,
        "lambda": 0.25,
        "lambda_moisture": (0.0, 0),
        "mu": 10000,
        "storage": over_humidity,
    },
]
MATERIALS = [
    m if "content" in m else {**m, "content": kuenzel_content(m["theta_eff"], m["theta_80"])} for m in MATERIALS
]


def material_text(m):
    """The material file."""
    notes = "".join(f"; {line}\n" for line in m["notes"])
    blocks = lambda functions: "\n".join(function_block(name, points) for name, points in functions)
    moisture_transport = m.get("liquid", lambda _: [])(m) + cup_values(m)
    absorption = f'AW = {number(m["absorption"])} kg/m2s05\n' if "absorption" in m else ""
    return f"""V6MARLZ! 006.000

{notes}; The tables are made by tools/make_materials.py.

[IDENTIFICATION]
NAME = en:{m["english"]}|de:{m["german"]}
LABORATORY = en:{m["source"]}
CATEGORY = {m["category"]}
COLOUR = {m["colour"]}
HATCHING = {m["hatching"]}
FLAGS = {m["flags"]}

[STORAGE_BASE_PARAMETERS]
RHO = {number(m["rho"])} kg/m3
CE = {number(m["c"])} J/kgK
THETA_POR = {number(m["theta_por"])} m3/m3
THETA_EFF = {number(m["theta_eff"])} m3/m3

[TRANSPORT_BASE_PARAMETERS]
LAMBDA = {number(m["lambda"])} W/mK
MEW = {number(m["mu"])} -
{absorption}{m.get("extra", "")}
[MOISTURE_STORAGE]
{blocks(m["storage"](m))}
{"[MOISTURE_TRANSPORT]" + chr(10) + blocks(moisture_transport) + chr(10) if moisture_transport else ""}[HEAT_TRANSPORT]
{blocks(heat_conductivity(m))}"""
