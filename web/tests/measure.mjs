// What is measured of the page, for the tests, which ask whether it works, and for the benchmark, which tells how quick it is.

/**
 * Moves the pointer from one place of the flow diagram to another, a move for each frame as a hand makes them: how many frames
 * and drawings there were, and milliseconds of a frame of dragging and of one before it. The pointer is held down.
 */
export async function drag(page, from, to, wanted) {
  await page.mouse.move(...from);
  await page.mouse.down();
  return await page.evaluate(async ([start, end, frames]) => {
    const diagram = document.querySelector('.figure.flow .diagram');
    const frame = () => new Promise((done) => requestAnimationFrame(done));
    const idle = performance.now();
    for (let i = 0; i < frames; ++i) await frame();
    const began = performance.now();
    let drawings = 0;
    const observer = new MutationObserver(() => ++drawings);
    observer.observe(diagram, { childList: true, subtree: true });
    for (let i = 1; i <= frames; ++i) {
      await frame();
      const part = i / frames;
      const place = { clientX: start[0] + (end[0] - start[0]) * part, clientY: start[1] + (end[1] - start[1]) * part };
      diagram.dispatchEvent(new PointerEvent('pointermove', { ...place, pointerId: 1, bubbles: true }));
    }
    const ended = performance.now();
    observer.disconnect();
    return { frames, drawings, perFrame: (ended - began) / frames, perIdleFrame: (began - idle) / frames };
  }, [from, to, wanted]);
}

const mostWait = 20_000; // ms for one product, on a machine that is busy with something else

/** Two places within the flow diagram. */
export async function acrossDiagram(page) {
  const box = await page.locator('.figure.flow svg').boundingBox();
  return [0, 1].map((part) => [box.x + box.width * (0.35 + 0.3 * part), box.y + box.height * (0.6 - 0.3 * part)]);
}

/** Shows another product `count` times, each until its answers are there; then what the page holds once all litter is gone. */
export async function changeProduct(page, count) {
  await page.evaluate(async ([wanted, patience]) => {
    const list = document.getElementById('list');
    const shows = () => document.querySelector('.product').dataset.shows;
    for (let i = 0; i < wanted; ++i) {
      const before = shows();
      const started = performance.now();
      list.dispatchEvent(new KeyboardEvent('keydown', { key: i % 20 < 10 ? 'ArrowDown' : 'ArrowUp', bubbles: true, cancelable: true }));
      while (shows() === before) {
        if (performance.now() - started > patience) throw new Error(`change ${i}: the page still shows ${before}`);
        await new Promise((done) => setTimeout(done, 1));
      }
    }
  }, [count, mostWait]);
  return await held(page);
}

/** Bytes of the page's JavaScript, and its nodes and listeners, with those that only a litter collection would find gone. */
export async function held(page) {
  const session = await page.context().newCDPSession(page);
  await session.send('HeapProfiler.collectGarbage');
  const { nodes, jsEventListeners } = await session.send('Memory.getDOMCounters');
  const { usedSize } = await session.send('Runtime.getHeapUsage');
  await session.detach();
  return { bytes: usedSize, nodes, listeners: jsEventListeners };
}
