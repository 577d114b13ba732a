// The page and its policy, as EmbedPage.cmake gives them to the monitor.
import { execFileSync } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { fileURLToPath } from "node:url";

const script = fileURLToPath(new URL("../../monitor/page/EmbedPage.cmake", import.meta.url));

function embedded() {
  const directory = mkdtempSync(join(tmpdir(), "page-"));
  try {
    const output = join(directory, "Page.cpp");
    execFileSync("cmake", [`-DOUTPUT=${output}`, "-P", script]);
    return readFileSync(output, "utf8");
  } finally {
    rmSync(directory, { recursive: true });
  }
}

const source = embedded();
export const page = source.match(/kPage = R"page\((.*)\)page";/s)[1];
const policyLiterals = source.match(/kPagePolicy =(.*?);\n/s)[1].matchAll(/"(.*)"/g);
export const policy = Array.from(policyLiterals, ([, text]) => text).join("");
