import type { CustomPlugin } from "svgo";
import type { ConformOptions } from "ozmira";

/**
 * A plug-in for svgo that rewrites a drawing so that Ozmira draws what a browser does. Put it last. A drawing that can't
 * be rewritten is an error unless `lossy` is set.
 */
export function ozmira(options?: ConformOptions): CustomPlugin;
export default ozmira;
