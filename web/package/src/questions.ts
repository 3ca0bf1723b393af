// What can be asked of a product database, and what comes back. Questions are texts as a user types them: a number is in
// the base unit (l/s, m/s, Pa) unless a unit follows it, "288m3/h", "0.2in.wg". Answers have the names and numbers of
// `tavd calc --json`, `tavd list --json` and `tavd select --json --explain`.

/** A result code of the library, with what it means. */
export interface Code {
  code: number;
  text: string;
}

/** Numbers whose names end in their unit: "qv_l_s", "v_m_s", "dp_min_Pa". */
export type Measures = Record<string, number>;

export interface Size {
  diameter_mm?: number;
  width_mm?: number;
  height_mm?: number;
}

/** How texts of a database are told. */
export interface Texts {
  /** Market area whose product codes are shown, such as "FIN"; empty: the codes of all markets. */
  market?: string;
  /** Language of descriptions: "en", "GBR" or "English"; empty: that of the market, or English. */
  language?: string;
}

export interface Product {
  class: string;
  id: string;
  code: string;
  description: string;
  kind: number | null;
  kind_text: string;
  size: Size | null;
  limits: Measures | null;
}

export interface ListedProduct extends Product {
  /** Whether it is the main record of a family of sizes. */
  family: boolean;
}

export interface Parameter {
  name: string;
  values: string[];
}

export interface ShownProduct extends Product {
  /** Whether its flows are air velocities. */
  by_velocity: boolean;
  parameters: Parameter[];
  has_throw: boolean;
  throw_values: string[];
  has_sketch: boolean;
  sizes: { id: string; size: Size | null }[];
  weblink: string;
}

/** Which product, with which values of its parameters ("G=45"). */
export interface Which {
  class: string;
  id: string;
  parameters?: string[];
  /** Units of the answer, such as "m3/h,Pa". */
  units?: string;
}

export interface Point extends Which {
  qv: string;
  dp?: string;
  /** Level difference between sound power and room, dB; 4 unless told. */
  room_damping?: string;
  /** Takes the end reflection of the duct off the sound table, as the flow diagram does. */
  end_reflection?: boolean;
}

export type Position = Code & { position?: number } & Partial<Record<string, number | string>>;

export interface Sound extends Code {
  bands_Hz?: number[];
  lw_dB?: number[];
  lw_dBA?: number;
  room_level_dBA?: number;
  room_damping_dB?: number;
  end_reflection?: string;
  reachable?: boolean;
}

export interface Calculated {
  product: Product & { parameters?: Record<string, string>; main_record?: unknown; layers?: unknown };
  operating_point?: { flow_in_range: boolean; dp_in_range?: boolean; reachable?: boolean; typed?: string } & Record<
    string,
    number | boolean | string
  >;
  pressure_range?: Code & Record<string, number | string>;
  position_stepless?: Position;
  position_stepped?: Position;
  fan?: Code & { check?: Code } & Record<string, number | string | Code>;
  sound?: Sound;
  attenuation_dB?: number[];
  throw_length_m?: number;
}

export interface DrawingQuestion extends Which {
  /** "800x600" unless told, pixels. */
  size?: string;
  /** "svg", or "txt" for the list of drawing operations. */
  form?: 'svg' | 'txt';
  /** In place of the product code. */
  title?: string;
}

export interface FlowDiagramQuestion extends DrawingQuestion {
  /** The point to mark. */
  qv?: string;
  dp?: string;
  /** Static pressure in place of total pressure. */
  static?: boolean;
}

export interface ThrowDiagramQuestion extends DrawingQuestion {
  qv: string;
  /** Selects the throw line. */
  value?: string;
  /** Of the flow axis: "l/s" unless told. */
  unit?: string;
}

export interface Drawing {
  picture: string;
  /** What it shows, in words. */
  description: string;
  /** What was asked for and it does not show, in words; empty if it shows all. */
  unmarked: string;
}

/** What is needed; each member as the option of `tavd select` of that name takes it. */
export interface Duty {
  qv: string;
  dp: string;
  max_lp?: string;
  max_lw?: string;
  throw?: string;
  size?: string;
  class?: string;
  rank?: string;
  top?: string;
  allow_unknown?: string;
  room_damping?: string;
  parameters?: string[];
  end_reflection?: boolean;
  units?: string;
}

export type Hit = {
  rank: number;
  class: string;
  id: string;
  code: string;
  description: string;
  size_mm: string;
  parameters?: Record<string, string>;
  pressure_range: Code & Record<string, number | string>;
  position_stepless?: Position;
  position_stepped?: Position;
  fan?: Code & { check: Code } & Record<string, number | string | Code>;
  sound: Sound;
  throw_length_m?: number;
  fit: number;
  unknown: string;
} & Record<string, unknown>;

export interface Selected {
  products: number;
  fitting: number;
  fitting_text: string;
  hits: Hit[];
  /** Why each of the others does not fit. */
  rejected: { class: string; id: string; code?: number; text?: string; [name: string]: unknown }[];
  /** Where nothing fits: what hinders those that come nearest. */
  nearest: string;
}

export interface Unit {
  name: string;
  sign: string;
  key: string;
  in_base: number;
  decimals: number;
  on_axes: boolean;
}

export interface About {
  version: string;
  interface: number;
  flow_units: Unit[];
  velocity_units: Unit[];
  pressure_units: Unit[];
  languages: { language: string; market: string; name: string }[];
  rankings: string[];
}
