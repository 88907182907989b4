import { check, conform, info, init, OzmiraError, render, type ErrorCode, type Finding } from "ozmira";

const findings: Finding[] = check("<svg/>");
const { svg, changed } = conform(new Uint8Array(), { decimals: 2, lossy: true });
const { width, data }: { width: number; data: Uint8Array } = render(svg, { scale: 2, format: "rgba", fill: "red" });
const kinds: number | undefined = info(svg).elements["Path"];
const loaded: Promise<void> = init(fetch("ozmira.wasm"));
const code: ErrorCode = new OzmiraError().code;
// @ts-expect-error: there is no such format.
render(svg, { format: "gif" });
// @ts-expect-error: a drawing is text or bytes.
check(3);
export { changed, code, data, findings, kinds, loaded, width };
