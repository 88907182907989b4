/** A drawing: SVG text, or its bytes in UTF-8. At most 64 MB. */
export type Drawing = string | ArrayBuffer | ArrayBufferView;

/** A place where a browser draws something else than Ozmira. */
export interface Finding {
  /** From 1. */
  line: number;
  /** From 1, in characters. */
  column: number;
  /** The identifier of the rule, such as "relative-after-z". */
  rule: string;
  /** "error": nothing can be drawn; "warning": something is drawn differently; "note": nothing looks different. */
  severity: "error" | "warning" | "note";
  /** What is different. */
  message: string;
  /** What to do about it. */
  remedy: string;
}

export interface ConformOptions {
  /** Decimals of coordinates, 0 to 12. Without it: three for a view box of 24 units, fewer for larger ones. */
  decimals?: number;
  /** Turn every stroke into a filled outline, which an application can tint. */
  outlineStrokes?: boolean;
  /** Leave out what can't be rewritten, instead of throwing "REFUSED". */
  lossy?: boolean;
}

export interface Conformed {
  /** The drawing for Ozmira; the text that was given when it has no error and no warning. */
  svg: string;
  /** What was found in the text that was given: the causes of each change. */
  findings: Finding[];
  /** `svg` is not the text that was given. */
  changed: boolean;
}

export interface RenderOptions {
  /** Largest width in points, above 0 and up to 32767; proportions are kept. Without both: the drawing's own size. */
  width?: number;
  /** Largest height in points. */
  height?: number;
  /** Pixels per point, 0.01 to 100; 1 without it. */
  scale?: number;
  /** The default fill colour, as an application tints icons: "#rgb", "#rrggbb", "rgb()" or a name of CSS. */
  fill?: string;
  /** "png" (without it): the bytes of a PNG file. "rgba": four bytes for each pixel, not premultiplied. */
  format?: "png" | "rgba";
  /** Seconds that drawing may take, 0 to 86400; 0 sets no limit; 30 without it. */
  timeout?: number;
}

export interface Picture {
  /** In pixels. */
  width: number;
  /** In pixels. */
  height: number;
  /** The PNG file or the pixels, the top row first. */
  data: Uint8Array;
}

/** A length as written; units are kept, never converted. */
export interface Length {
  unit: "None" | "EM" | "PX" | "PT" | "PC" | "CM" | "MM" | "IN" | "Percent";
  value: number;
}

/** What `ozmira info --json` tells about a drawing. */
export interface Info {
  size: { width: Length; height: Length };
  /** Origin and size. */
  viewBox: [x: number, y: number, width: number, height: number];
  /** How many elements there are of each kind. */
  elements: Record<string, number>;
  hidden: number;
  styles: number;
  definitions: number;
  gradients: number;
  /** What drawing costs, once references are followed. */
  drawing: { possible: boolean; problem?: string; elements: number; segments: number; depth: number };
  /** The ids that references name but no element has. */
  missing: string[];
  /** How often each rule of an error or a warning is met. */
  differences: Record<string, number>;
}

export type ErrorCode =
  /** The text is no drawing. */
  | "UNREADABLE"
  /** The text is larger than 64 MB. */
  | "TOO_LARGE"
  /** References form a cycle, or multiply beyond a limit. */
  | "TOO_COMPLEX"
  /** The drawing has no size, or the picture would be too large. */
  | "BAD_SIZE"
  /** Drawing took longer than `timeout`. */
  | "TIMEOUT"
  /** The drawing can't be rewritten; `findings` says why. */
  | "REFUSED"
  /** An option, or its value, makes no sense. */
  | "BAD_OPTION"
  /** There is not enough memory. */
  | "OUT_OF_MEMORY"
  /** The drawing nests too deep for the engine. The next call uses a new instance. */
  | "CRASHED"
  /** The module is not loaded, or can't be. */
  | "NOT_LOADED";

/** What all functions throw. The package can be used further after every error. */
export class OzmiraError extends Error {
  readonly code: ErrorCode;
  /** Of "REFUSED": everything that was found. */
  readonly findings?: Finding[];
}

/** The places where a browser draws something else, in the order of the text. */
export function check(svg: Drawing): Finding[];

/** Rewrites a drawing so that Ozmira draws what a browser does. */
export function conform(svg: Drawing, options?: ConformOptions): Conformed;

/** Draws a drawing. */
export function render(svg: Drawing, options?: RenderOptions): Picture;

/** What a drawing contains. */
export function info(svg: Drawing): Info;

/**
 * Loads the module. In Node that happens at the first call anyway; elsewhere, await it before the first call.
 *
 * @param source Bytes, a compiled module, a response or an address, or a promise of one; without it, `ozmira.wasm`
 * beside the package's code.
 */
export function init(
  source?: InitSource | Promise<InitSource>,
): Promise<void>;

export type InitSource = ArrayBuffer | ArrayBufferView | WebAssembly.Module | Response | URL | string;
