import { call } from '../api.js';
import { h, row, group, section, popup, toggle, field, slider, note } from '../ui.js';
import { Preferences } from '../settings.js';

const POSITIONS = [['bottom', 'Bottom'], ['left', 'Left'], ['right', 'Right']];
const EFFECTS = [['none', 'None'], ['scale', 'Scale'], ['magnify', 'Magnify']];
const ANIMATIONS = [['bounce', 'Bounce'], ['pulse', 'Pulse'], ['shake', 'Shake']];
const INDICATORS = [['dot', 'Dot'], ['dash', 'Dash']];
const TRASH_ICONS = [['system', 'System'], ['wire', 'Wire'], ['aqua', 'Aqua'], ['steel', 'Steel'], ['snow', 'Snow'], ['neon', 'Neon'], ['recycle', 'Recycle']];
const NATIVE_MODES = [['unchanged', 'Leave It Alone'], ['autoHide', 'Hide Automatically'], ['hidden', 'Keep It Hidden']];
const AUTO_HIDE = [['', 'Let Corvane Decide'], ['true', 'Always'], ['false', 'Never']];

export async function render(root, { title }) {
  const prefs = await Preferences.load();
  const image = h('img', { alt: 'Preview of the own Dock' });
  const preview = h('div', { class: 'preview', 'aria-live': 'polite' }, image);
  root.append(h('h1', {}, title));

  let previewRun = 0;
  async function updatePreview() {
    const run = ++previewRun;
    try {
      const body = { output: '-', width: 1200 };
      const reply = await call('preview', body);
      if (run !== previewRun) return;
      if (!reply.image) throw new Error('the tool gave no picture');
      image.src = reply.image;
      preview.dataset.version = String(run);
    } catch (error) {
      if (run === previewRun) preview.replaceChildren(note(`No preview: ${error.message}`, true));
    }
  }
  prefs.addEventListener('change', updatePreview);

  const style = (key) => prefs.style(key);
  const setStyle = (key) => (value) => prefs.setStyle(key, value);
  const pref = (name) => (value) => prefs.set(name, value);
  const iconSize = style('iconSize');
  const sizeSlider = slider('Icon Size', iconSize ?? 48, { min: 16, max: 128, step: 1, unit: ' pt' }, setStyle('iconSize'));
  sizeSlider[0].disabled = iconSize == null;

  root.append(
    group(row('Use own Dock', toggle('Use Own Dock', prefs.get('usesOwnDock'), pref('usesOwnDock')),
      'Corvane draws a Dock of its own that shows the active workspace, with themes and widgets.')),
    group(preview),
    section('Look',
      group(
        row('Position on screen', popup('Position on Screen', POSITIONS, style('position') ?? 'bottom', setStyle('position'))),
        row('Size', [
          toggle('Same Size as the macOS Dock', iconSize == null, async (same) => {
            await prefs.setStyle('iconSize', same ? null : 48);
            sizeSlider[0].disabled = same;
          }),
          ...sizeSlider,
        ], 'On: the icons take the macOS Dock\'s size.'),
        row('Pointer effect', popup('Pointer Effect', EFFECTS, style('hoverEffect') ?? 'scale', setStyle('hoverEffect')),
          'Magnify works on a bottom Dock; at the sides it scales.'),
        row('Hover scale', slider('Hover Scale', style('hoverScale') ?? 1.1, { min: 1, max: 1.5, step: 0.05, unit: '×' }, setStyle('hoverScale'))),
        row('Launch animation', popup('Launch Animation', ANIMATIONS, style('launchAnimation') ?? 'bounce', setStyle('launchAnimation'))),
        row('Running indicator', popup('Running Indicator', INDICATORS, style('indicatorStyle') ?? 'dot', setStyle('indicatorStyle'))),
        row('Indicator follows workspace', toggle('Indicator Follows Workspace', style('indicatorFollowsWorkspace') ?? true,
          setStyle('indicatorFollowsWorkspace')), 'The running indicator takes the active workspace\'s colour.'),
      )),
    section('Showing and Hiding',
      group(
        row('Hide automatically', popup('Hide Automatically', AUTO_HIDE, prefs.get('autoHidesDock') == null ? '' : String(prefs.get('autoHidesDock')),
          (value) => prefs.set('autoHidesDock', value === '' ? null : value === 'true'))),
        row('Reveal delay', [field('Reveal Delay', prefs.get('dockRevealDelay') ?? '', (value) => {
          const seconds = value.trim() === '' ? null : Number(value);
          if (seconds !== null && !(seconds >= 0)) throw new Error('The delay is a number of seconds.');
          return prefs.set('dockRevealDelay', seconds);
        }, { type: 'number', placeholder: 'Default' }), h('span', { class: 'secondary' }, 'seconds')]),
        row('Hide when a window covers it', toggle('Hide When a Window Covers It', prefs.get('hidesDockWhenCovered'), pref('hidesDockWhenCovered'))),
        row('Keep windows off the Dock', toggle('Keep Windows off the Dock', prefs.get('reservesDockSpace'), pref('reservesDockSpace')),
          'Reserves the Dock\'s space at the edge of the screen.'),
        row('Show on every display', toggle('Show on Every Display', prefs.get('showsDockOnEveryDisplay'), pref('showsDockOnEveryDisplay'))),
        row('Only apps of this desktop', toggle('Only Apps of This Desktop', prefs.get('filtersByDesktop'), pref('filtersByDesktop'))),
      )),
    section('Tiles',
      group(
        row('Downloads', toggle('Show Downloads', style('showsDownloads') ?? true, setStyle('showsDownloads'))),
        row('Trash', [popup('Trash Icon', TRASH_ICONS, style('trashIcon') ?? 'system', setStyle('trashIcon')),
          toggle('Show Trash', style('showsTrash') ?? true, setStyle('showsTrash'))]),
        row('Running apps that are not pinned', toggle('Show Running Apps', style('showsRunningApps') ?? true, setStyle('showsRunningApps'))),
        row('Launcher', toggle('Show Launcher', style('showsLauncher') ?? false, setStyle('showsLauncher'))),
        row('Window previews', toggle('Window Previews', style('windowPreviews')?.isEnabled ?? true,
          (on) => prefs.setStyle('windowPreviews', { ...(style('windowPreviews') ?? {}), isEnabled: on }))),
        row('Save energy', toggle('Save Energy', style('savesEnergy') ?? false, setStyle('savesEnergy')),
          'Redraws less often.'),
      )),
    section('macOS Dock',
      group(row('While the own Dock is on', popup('macOS Dock While the Own Dock Is On', NATIVE_MODES,
        prefs.get('nativeDockMode') ?? 'autoHide', pref('nativeDockMode'))))),
  );
  await updatePreview();
}
