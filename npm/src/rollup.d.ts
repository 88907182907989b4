export interface CheckOptions {
  /** The least severity that fails the build; false: none. "error" without it. What is less severe is a warning. */
  failOn?: "error" | "warning" | "note" | false;
}

/** A plug-in for Rollup and Vite that checks every drawing that is imported. */
export function ozmira(options?: CheckOptions): {
  name: string;
  enforce: "pre";
  load(id: string): Promise<null>;
};
export default ozmira;
