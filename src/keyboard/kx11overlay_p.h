// Not part of the public interface: what the key-tip overlay asks the X server.
#ifndef KX11OVERLAY_P_H
#define KX11OVERLAY_P_H

namespace KX11Overlay {
/**
 * Whether a compositing manager owns the screen's "_NET_WM_CM_S<n>" selection, so that a
 * translucent window shows what lies below it. Without an X display (the offscreen
 * platform) the backing store is translucent anyway, and the answer is true.
 */
bool isCompositingManagerRunning();
} // namespace KX11Overlay

#endif // KX11OVERLAY_P_H
